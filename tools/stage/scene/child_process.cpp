#include "tools/stage/scene/child_process.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <thread>

#include "tools/stage/waiting.h"

namespace nimbletype {
namespace {

using namespace std::chrono_literals;

std::vector<std::string> environmentWith(const std::map<std::string, std::string>& changes) {
  std::vector<std::string> result;
  for (char** entry = environ; *entry; ++entry) {
    const std::string line = *entry;
    if (!changes.contains(line.substr(0, line.find('=')))) result.push_back(line);
  }
  for (const auto& [name, value] : changes) result.emplace_back(name).append("=").append(value);
  return result;
}

std::vector<char*> pointers(std::vector<std::string>& texts) {
  std::vector<char*> result;
  result.reserve(texts.size() + 1);
  for (std::string& text : texts) result.push_back(text.data());
  result.push_back(nullptr);
  return result;
}

}  // namespace

ChildProcess::ChildProcess(const Start& start) {
  std::vector<std::string> words = start.command, variables = environmentWith(start.environment);
  const std::vector<char*> argv = pointers(words), envp = pointers(variables);
  const int log = open(start.log.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
  const int nothing = open("/dev/null", O_RDONLY | O_CLOEXEC);
  if (log < 0) throw GaveUp(start.log + " cannot be written");
  process_ = fork();
  if (process_ == 0) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    dup2(nothing, STDIN_FILENO);
    dup2(log, STDOUT_FILENO);
    dup2(log, STDERR_FILENO);
    execvpe(argv[0], argv.data(), envp.data());
    _exit(127);
  }
  close(log);
  close(nothing);
  if (process_ < 0) throw GaveUp(words[0] + " could not be started");
}

ChildProcess::~ChildProcess() {
  if (ended_) return;
  signal(SIGCONT);
  signal(SIGTERM);
  for (int i = 0; i < 100 && isRunning(); ++i) std::this_thread::sleep_for(20ms);
  if (ended_) return;
  signal(SIGKILL);
  waitpid(process_, nullptr, 0);
}

bool ChildProcess::isRunning() {
  if (!ended_) ended_ = waitpid(process_, &status_, WNOHANG) != 0;
  return !ended_;
}

std::optional<int> ChildProcess::exitStatus() {
  if (isRunning() || !WIFEXITED(status_)) return std::nullopt;
  return WEXITSTATUS(status_);
}

void ChildProcess::signal(int number) const {
  if (!ended_) kill(process_, number);
}

}  // namespace nimbletype
