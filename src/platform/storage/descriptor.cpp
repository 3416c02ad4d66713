#include "platform/storage/descriptor.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace nimbletype {

bool Descriptor::write(std::string_view bytes) const {
  while (!bytes.empty()) {
    const auto written = ::write(fd_, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

// The Mac's own fsync is content with the disk's cache.
bool Descriptor::sync() const {
#ifdef F_FULLFSYNC
  if (::fcntl(fd_, F_FULLFSYNC) == 0) return true;
#endif
  return ::fsync(fd_) == 0;
}

bool Descriptor::close() {
  return fd_ < 0 || ::close(std::exchange(fd_, -1)) == 0;
}

void syncFolder(const std::filesystem::path& folder) {
  const Descriptor descriptor(::open(folder.c_str(), O_RDONLY | O_CLOEXEC));
  if (descriptor.isOpen()) descriptor.sync();
}

}  // namespace nimbletype
