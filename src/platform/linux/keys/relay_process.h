#pragma once
#include <sys/types.h>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <thread>

#include "platform/linux/keys/relay_message.h"

namespace nimbletype {

// One running key relay: its process, the socket to it and the two threads that wait for it. They only wait
// and hand over. The process is killed when it is stopped or this object goes; the X server then frees the
// keyboard.
class RelayProcess {
 public:
  // None when the program cannot be started.
  static std::unique_ptr<RelayProcess> launch(const std::string& program, const std::string& display,
                                              std::chrono::milliseconds deadline);
  ~RelayProcess();
  RelayProcess(const RelayProcess&) = delete;
  RelayProcess& operator=(const RelayProcess&) = delete;

  // Waits for one message; none when the process ended or the time ran out. Only before `listen`.
  std::optional<RelayMessage> receive(std::chrono::milliseconds patience);
  // Both functions are called on other threads: `ended` once the process has gone, by itself or not.
  void listen(std::function<void(const RelayMessage&)> received, std::function<void()> ended);
  // Never waits: a message that the relay is not able to take is lost.
  void send(const RelayMessage& message) const;
  pid_t processID() const { return process_; }

 private:
  RelayProcess(int socket, pid_t process) : socket_(socket), process_(process) {}
  void readMessages(const std::function<void(const RelayMessage&)>& received) const;
  void guard(const std::function<void()>& ended) const;
  bool endsWithin(std::chrono::milliseconds patience) const;

  int socket_;
  pid_t process_;
  std::thread reader_, guard_;
};

// Where the relay is: beside this program, else where packages put such programs.
std::string installedKeyRelay();

}  // namespace nimbletype
