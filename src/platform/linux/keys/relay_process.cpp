#include "platform/linux/keys/relay_process.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <vector>

namespace nimbletype {

namespace {

constexpr int relaySocket = 3;  // the descriptor under which the relay finds it
constexpr std::chrono::milliseconds goodbye{200};

pid_t spawn(const std::vector<std::string>& words, int socket) {
  posix_spawn_file_actions_t actions;
  posix_spawnattr_t attributes;
  posix_spawn_file_actions_init(&actions);
  posix_spawnattr_init(&attributes);
  posix_spawn_file_actions_adddup2(&actions, socket, relaySocket);
  posix_spawn_file_actions_addclosefrom_np(&actions, relaySocket + 1);
  // A session of its own: what stops this process from a terminal must not stop the relay as well.
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID);
  std::vector<char*> arguments;
  arguments.reserve(words.size() + 1);
  for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  pid_t process = -1;
  const int error = posix_spawn(&process, words[0].c_str(), &actions, &attributes, arguments.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  posix_spawnattr_destroy(&attributes);
  return error == 0 ? process : -1;
}

}  // namespace

std::string installedKeyRelay() {
  namespace fs = std::filesystem;
  std::error_code error;
  const fs::path here = fs::read_symlink("/proc/self/exe", error).parent_path();
  for (const char* place : {"nimbletype-keys", "../lib/nimbletype/nimbletype-keys"})
    if (fs::exists(here / place, error)) return here / place;
  return here / "nimbletype-keys";
}

std::unique_ptr<RelayProcess> RelayProcess::launch(const std::string& program, const std::string& display,
                                                   std::chrono::milliseconds deadline) {
  int ends[2];
  if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0) return nullptr;
  // Out of the way of the number it gets over there: a descriptor copied onto itself would stay
  // close-on-exec.
  const int theirs = fcntl(ends[1], F_DUPFD_CLOEXEC, relaySocket + 1);
  close(ends[1]);
  const pid_t process = spawn({program, display, std::to_string(deadline.count())}, theirs);
  close(theirs);
  if (process < 0) {
    close(ends[0]);
    return nullptr;
  }
  return std::unique_ptr<RelayProcess>(new RelayProcess(ends[0], process));
}

RelayProcess::~RelayProcess() {
  shutdown(socket_, SHUT_RDWR);
  if (!endsWithin(goodbye)) kill(process_, SIGKILL);
  if (reader_.joinable()) reader_.join();
  if (guard_.joinable()) guard_.join();
  waitpid(process_, nullptr, 0);
  close(socket_);
}

std::optional<RelayMessage> RelayProcess::receive(std::chrono::milliseconds patience) {
  pollfd waiting{socket_, POLLIN, 0};
  RelayMessage message;
  if (poll(&waiting, 1, static_cast<int>(patience.count())) != 1) return std::nullopt;
  if (recv(socket_, &message, sizeof message, 0) != sizeof message) return std::nullopt;
  return message;
}

void RelayProcess::listen(std::function<void(const RelayMessage&)> received, std::function<void()> ended) {
  reader_ = std::thread([this, received = std::move(received)] { readMessages(received); });
  guard_ = std::thread([this, ended = std::move(ended)] { guard(ended); });
}

void RelayProcess::send(const RelayMessage& message) const {
  ::send(socket_, &message, sizeof message, MSG_DONTWAIT | MSG_NOSIGNAL);
}

void RelayProcess::readMessages(const std::function<void(const RelayMessage&)>& received) const {
  RelayMessage message;
  while (true) {
    const ssize_t size = recv(socket_, &message, sizeof message, 0);
    if (size == sizeof message)
      received(message);
    else if (size >= 0 || errno != EINTR)
      return;
  }
}

// A relay that is stopped while it holds a key holds the whole keyboard: better it dies and a new one starts.
void RelayProcess::guard(const std::function<void()>& ended) const {
  while (true) {
    siginfo_t info{};
    // The process is only reaped at the very end, so its id stays its own until then.
    if (waitid(P_PID, static_cast<id_t>(process_), &info, WEXITED | WSTOPPED | WNOWAIT) != 0) {
      if (errno == EINTR) continue;
      break;
    }
    if (info.si_code != CLD_STOPPED) break;
    kill(process_, SIGKILL);
    // The stop stays reported until it is fetched.
    waitid(P_PID, static_cast<id_t>(process_), &info, WSTOPPED | WNOHANG);
  }
  ended();
}

bool RelayProcess::endsWithin(std::chrono::milliseconds patience) const {
  const auto deadline = std::chrono::steady_clock::now() + patience;
  while (true) {
    siginfo_t info{};
    if (waitid(P_PID, static_cast<id_t>(process_), &info, WEXITED | WNOWAIT | WNOHANG) != 0) return true;
    if (info.si_pid == process_) return true;
    if (std::chrono::steady_clock::now() >= deadline) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
}

}  // namespace nimbletype
