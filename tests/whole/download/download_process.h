#pragma once
#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
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
    process_ = ::fork();
    if (process_ != 0) return;
    const int file = ::open(output.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    ::dup2(file, 1);
    ::dup2(file, 2);
    ::execv(NIMBLETYPE_CLI, arguments.data());
    ::_exit(127);
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
