#pragma once
#include <sys/types.h>

#include <string>
#include <vector>

namespace nimbletype {

// A private desktop (X server, session bus, accessibility bus, window manager) for the test program: started
// once, on first use, its environment made that of the program, and ended with it. Its trouble is told on
// standard error.
class DesktopSession {
 public:
  // Whether the desktop is up; the first call starts it.
  static bool start();
};

// A program on that desktop, ended by its process id.
class DesktopProgram {
 public:
  explicit DesktopProgram(const std::vector<std::string>& command);
  ~DesktopProgram();
  DesktopProgram(const DesktopProgram&) = delete;
  DesktopProgram& operator=(const DesktopProgram&) = delete;

  pid_t processID() const { return process_; }

 private:
  pid_t process_ = 0;
};

}  // namespace nimbletype
