#pragma once
#include <optional>
#include <string>

namespace nimbletype {

// One small file that is read and replaced as a whole. Main thread only, except that a call may run on
// another thread for as long as no other call runs.
class FileStore {
 public:
  virtual ~FileStore() = default;
  virtual std::optional<std::string> read() const = 0;
  // Replaces the content in one step; false, with the old content intact, when that fails.
  virtual bool write(const std::string& content) = 0;
  // Moves content that makes no sense out of the way, under a name that says so, where the user can find it.
  // False when it is still in the way.
  virtual bool setAside() = 0;
  // Removes the content and all that was set aside; false when some of it is still there.
  virtual bool erase() = 0;
};

}  // namespace nimbletype
