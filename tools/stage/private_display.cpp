#include "tools/stage/private_display.h"

#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <stdexcept>

namespace nimbletype {

namespace {

// The server writes its display's number as a line once it takes connections.
std::string readLine(int descriptor, int patienceMs) {
  std::string line;
  pollfd waiting{descriptor, POLLIN, 0};
  char c = 0;
  while (poll(&waiting, 1, patienceMs) == 1 && read(descriptor, &c, 1) == 1 && c != '\n') line += c;
  return c == '\n' ? line : std::string();
}

}  // namespace

PrivateDisplay::PrivateDisplay() {
  int ends[2];
  if (pipe(ends) != 0) throw std::runtime_error("no pipe for the X server");
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, ends[1], 3);
  posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", 1, 0);
  posix_spawn_file_actions_addclosefrom_np(&actions, 4);
  const char* arguments[] = {"Xvfb",       "-displayfd", "3",   "-screen",  "0",
                             "800x600x24", "-nolisten",  "tcp", "-noreset", nullptr};
  const int error = posix_spawnp(&server_, "Xvfb", &actions, nullptr, const_cast<char**>(arguments), environ);
  posix_spawn_file_actions_destroy(&actions);
  close(ends[1]);
  const std::string number = error == 0 ? readLine(ends[0], 20000) : std::string();
  close(ends[0]);
  if (number.empty()) throw std::runtime_error("Xvfb did not name its display within 20 s");
  name_ = ":" + number;
}

PrivateDisplay::~PrivateDisplay() {
  if (server_ <= 0) return;
  kill(server_, SIGTERM);
  waitpid(server_, nullptr, 0);
}

}  // namespace nimbletype
