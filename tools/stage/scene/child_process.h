#pragma once
#include <sys/types.h>

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace nimbletype {

// A program started for the demo; ended with this object, and with this process however that ends.
class ChildProcess {
 public:
  struct Start {
    std::vector<std::string> command;
    std::map<std::string, std::string> environment;  // on top of our own
    std::string log;                                 // takes standard output and error
  };
  explicit ChildProcess(const Start& start);  // throws when the program cannot be started
  ~ChildProcess();
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  pid_t processID() const { return process_; }
  bool isRunning();
  // What it returned; none while it runs and where a signal ended it.
  std::optional<int> exitStatus();
  void signal(int number) const;

 private:
  pid_t process_ = 0;
  bool ended_ = false;
  int status_ = 0;  // as waitpid tells it
};

}  // namespace nimbletype
