#include "tools/stage/desktop_session.h"

#include <fcntl.h>
#include <glib.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <thread>

namespace nimbletype {
namespace {

using namespace std::chrono_literals;

// The launcher ends the desktop once this command ends, which it does when this program closes the pipe or
// dies.
constexpr const char* launcher = "tools/stage/with_desktop.sh";
constexpr const char* tellAndStay =
    "for name in DISPLAY DBUS_SESSION_BUS_ADDRESS HOME XDG_RUNTIME_DIR LANG LC_ALL GDK_BACKEND "
    "QT_QPA_PLATFORM "
    "QT_LINUX_ACCESSIBILITY_ALWAYS_ON GTK_MODULES GSETTINGS_BACKEND; do echo \"$name=${!name}\"; done; "
    "echo ready; read -r _";

pid_t spawn(const std::vector<std::string>& command, posix_spawn_file_actions_t* actions) {
  std::vector<char*> arguments;
  arguments.reserve(command.size() + 1);
  for (const auto& word : command) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  pid_t process = 0;
  return posix_spawnp(&process, arguments[0], actions, nullptr, arguments.data(), environ) == 0 ? process : 0;
}

class RunningDesktop {
 public:
  RunningDesktop() {
    std::array<int, 2> in{}, out{};
    if (pipe2(in.data(), O_CLOEXEC) != 0 || pipe2(out.data(), O_CLOEXEC) != 0) return;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, in[0], STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, out[1], STDOUT_FILENO);
    process_ = spawn({launcher, "bash", "-c", tellAndStay}, &actions);
    posix_spawn_file_actions_destroy(&actions);
    close(in[0]);
    close(out[1]);
    hold_ = in[1];
    takeOver(out[0]);
    if (process_ == 0) std::fprintf(stderr, "%s could not be started from this folder\n", launcher);
  }
  ~RunningDesktop() {
    close(hold_);
    if (process_ != 0) waitpid(process_, nullptr, 0);
  }
  RunningDesktop(const RunningDesktop&) = delete;
  RunningDesktop& operator=(const RunningDesktop&) = delete;
  bool isUp() const { return up_; }

 private:
  void takeOver(int told) {
    FILE* lines = fdopen(told, "r");
    std::array<char, 4096> buffer{};
    while (!up_ && std::fgets(buffer.data(), buffer.size(), lines)) {
      std::string line(buffer.data());
      while (line.ends_with('\n')) line.pop_back();
      const std::size_t equals = line.find('=');
      if (equals != std::string::npos)
        setenv(line.substr(0, equals).c_str(), line.substr(equals + 1).c_str(), 1);
      up_ = line == "ready";
    }
    std::fclose(lines);
  }

  pid_t process_ = 0;
  int hold_ = -1;
  bool up_ = false;
};

}  // namespace

bool DesktopSession::start() {
  static const RunningDesktop desktop;
  return desktop.isUp();
}

DesktopProgram::DesktopProgram(const std::vector<std::string>& command) {
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
    posix_spawn_file_actions_addopen(&actions, stream, "/dev/null", O_RDWR, 0);
  process_ = spawn(command, &actions);
  posix_spawn_file_actions_destroy(&actions);
  if (process_ == 0) std::fprintf(stderr, "%s could not be started; is it installed?\n", command[0].c_str());
}

DesktopProgram::~DesktopProgram() {
  if (process_ == 0) return;
  kill(process_, SIGCONT);
  kill(process_, SIGTERM);
  for (int i = 0; i < 100 && waitpid(process_, nullptr, WNOHANG) == 0; ++i) std::this_thread::sleep_for(20ms);
  kill(process_, SIGKILL);
  waitpid(process_, nullptr, 0);
}

}  // namespace nimbletype
