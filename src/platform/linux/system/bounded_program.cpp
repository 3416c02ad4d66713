#include "platform/linux/system/bounded_program.h"

#include <fcntl.h>
#include <glib.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>

namespace nimbletype {
namespace {

constexpr int patience = 50;  // ms between two looks at whether it is called off
constexpr std::size_t mostOutput = 4u << 20;

class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  ~Descriptor() {
    if (number_ >= 0) close(number_);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  int get() const { return number_; }

 private:
  int number_;
};

// In memory, so that a program that does not read it to its end cannot hold up anybody.
int fileHolding(const std::string& input) {
  const int file = memfd_create("input", MFD_CLOEXEC);
  for (std::size_t at = 0; file >= 0 && at < input.size();) {
    const ssize_t written = write(file, input.data() + at, input.size() - at);
    if (written <= 0) break;
    at += static_cast<std::size_t>(written);
  }
  if (file >= 0) lseek(file, 0, SEEK_SET);
  return file;
}

std::optional<pid_t> spawned(const std::vector<std::string>& command, int input, int output) {
  std::vector<char*> arguments;
  arguments.reserve(command.size() + 1);
  for (const auto& word : command) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, input, STDIN_FILENO);
  posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
  posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
  pid_t process = 0;
  const int error = posix_spawn(&process, arguments[0], &actions, nullptr, arguments.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  return error == 0 ? std::optional(process) : std::nullopt;
}

// Until the program closes its output.
std::optional<std::string> readAll(int output, double seconds, const std::function<bool()>& isCalledOff) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
  std::string all;
  char part[8192];
  while (!isCalledOff() && std::chrono::steady_clock::now() < end && all.size() < mostOutput) {
    pollfd waiting{output, POLLIN, 0};
    if (poll(&waiting, 1, patience) <= 0) continue;
    const ssize_t count = read(output, part, sizeof part);
    if (count == 0) return all;
    if (count > 0) all.append(part, static_cast<std::size_t>(count));
  }
  return std::nullopt;
}

}  // namespace

std::optional<std::string> outputOf(const std::vector<std::string>& command, const std::string& input,
                                    double seconds, const std::function<bool()>& isCalledOff) {
  const Descriptor file(fileHolding(input));
  int ends[2];
  if (file.get() < 0 || pipe2(ends, O_CLOEXEC) != 0) return std::nullopt;
  const Descriptor output(ends[0]);
  std::optional<pid_t> process;
  {
    const Descriptor theirs(ends[1]);
    process = spawned(command, file.get(), theirs.get());
  }
  if (!process) return std::nullopt;
  auto all = readAll(output.get(), seconds, isCalledOff);
  if (!all) kill(*process, SIGKILL);
  int status = 0;
  waitpid(*process, &status, 0);
  return WIFEXITED(status) && WEXITSTATUS(status) == 0 ? all : std::nullopt;
}

std::string programNamed(const std::string& name) {
  char* found = g_find_program_in_path(name.c_str());
  std::string path = found ? found : "";
  g_free(found);
  return path;
}

}  // namespace nimbletype
