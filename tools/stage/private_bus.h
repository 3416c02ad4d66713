#pragma once
#include <sys/types.h>

#include <memory>

#include "tools/stage/desktop_session.h"
#include "tools/stage/temporary_folder.h"
#include "tools/stage/waiting.h"

namespace nimbletype {

// A session bus for this program alone, which starts no services by itself; ends with the program.
class PrivateBus {
 public:
  // Whether the bus is up; the first call starts it.
  static bool start();
  static bool hasOwner(const char* name);
};

// An unlocked keyring of its own, on the private bus.
class PrivateKeyring {
 public:
  PrivateKeyring();

  void lock();
  void unlock();
  void stop();  // for good
  pid_t processID() const { return daemon_->processID(); }

 private:
  TemporaryFolder folder_;
  std::unique_ptr<DesktopProgram> daemon_;
};

}  // namespace nimbletype
