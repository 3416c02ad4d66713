#include "tools/stage/servers/llama_server.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <thread>
#include <utility>

namespace nimbletype {
namespace {

constexpr auto patience = std::chrono::seconds(60);

// In the child: becomes the server, which ends with its parent.
[[noreturn]] void become(std::vector<char*>& arguments, const char* log) {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  const int file = open(log, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
  dup2(file, STDOUT_FILENO);
  dup2(file, STDERR_FILENO);
  execv(arguments.front(), arguments.data());
  _exit(127);
}

// What the log says of where it listens; empty while it says nothing.
std::string listeningAddress(const std::string& log) {
  const std::string_view words = "listening on ";
  const auto start = log.find(words);
  const auto end = log.find('\n', start);
  if (start == log.npos || end == log.npos) return {};
  return log.substr(start + words.size(), end - start - words.size());
}

}  // namespace

LlamaServer::LlamaServer(const std::string& program, const std::string& model,
                         const std::vector<std::string>& arguments) {
  std::vector<std::string> all{"-m", model, "--host", "127.0.0.1", "--port",       "0",   "-np",
                               "1",  "-t",  "1",      "--offline", "--log-colors", "off", "--no-webui"};
  all.insert(all.end(), arguments.begin(), arguments.end());
  start(program, std::move(all));
  const auto giveUp = std::chrono::steady_clock::now() + patience;
  while ((address_ = listeningAddress(log())).empty()) {
    const bool ended = waitpid(process_, nullptr, WNOHANG) != 0;
    if (ended) process_ = -1;
    if (ended || std::chrono::steady_clock::now() > giveUp) {
      const auto said = log();
      stop();
      throw std::runtime_error(program + " does not come up: " +
                               said.substr(said.size() - std::min<std::size_t>(said.size(), 2000)));
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
}

LlamaServer::~LlamaServer() {
  stop();
}

void LlamaServer::start(const std::string& program, std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), program);
  std::vector<char*> pointers;
  pointers.reserve(arguments.size() + 1);
  for (auto& argument : arguments) pointers.push_back(argument.data());
  pointers.push_back(nullptr);
  const auto log = (folder_.path / "log").string();
  process_ = fork();
  if (process_ == 0) become(pointers, log.c_str());
}

void LlamaServer::stop() {
  if (process_ > 0) {
    kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
  }
}

std::string LlamaServer::log() const {
  std::ostringstream text;
  text << std::ifstream(folder_.path / "log").rdbuf();
  return text.str();
}

}  // namespace nimbletype
