#pragma once
#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

namespace nimbletype {

// `nimbletype-cli download`, running; killed with the object.
class DownloadProcess {
 public:
  // What it says goes to the file `output`.
  DownloadProcess(std::vector<std::string> options, const std::filesystem::path& output) {
    options.insert(options.begin(), {NIMBLETYPE_CLI, "download"});
    std::vector<char*> arguments;
    for (std::string& option : options) arguments.push_back(option.data());
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_addopen(&actions, 1, output.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    ::posix_spawn_file_actions_adddup2(&actions, 1, 2);
    const int error = ::posix_spawn(&process_, NIMBLETYPE_CLI, &actions, nullptr, arguments.data(), environ);
    ::posix_spawn_file_actions_destroy(&actions);
    if (error != 0) throw std::runtime_error("cannot start nimbletype-cli");
  }
  ~DownloadProcess() {
    if (process_ <= 0) return;
    ::kill(process_, SIGKILL);
    wait();
  }
  DownloadProcess(const DownloadProcess&) = delete;
  DownloadProcess& operator=(const DownloadProcess&) = delete;

  bool isRunning() const {
    siginfo_t info{};
    return ::waitid(P_PID, static_cast<id_t>(process_), &info, WEXITED | WNOHANG | WNOWAIT) == 0 &&
           info.si_pid == 0;
  }
  void signal(int number) const { ::kill(process_, number); }
  // The exit status, or the number of the signal that ended it below zero.
  int wait() {
    int status = 0;
    ::waitpid(process_, &status, 0);
    process_ = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
  }

 private:
  pid_t process_ = -1;
};

}  // namespace nimbletype
