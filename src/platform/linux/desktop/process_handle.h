#pragma once
#include <sys/types.h>

#include <functional>

namespace nimbletype {

// One process, and never another that gets its number later. Needs a GLib main loop on the default context.
class ProcessHandle {
 public:
  // `ended` is called once after the process has ended; it may destroy the handle.
  ProcessHandle(pid_t process, std::function<void()> ended);
  ~ProcessHandle();
  ProcessHandle(const ProcessHandle&) = delete;
  ProcessHandle& operator=(const ProcessHandle&) = delete;

  bool isOpen() const { return descriptor_ >= 0; }  // there was such a process
  void send(int signal) const;

 private:
  int descriptor_;
  unsigned source_ = 0;
  std::function<void()> ended_;
};

}  // namespace nimbletype
