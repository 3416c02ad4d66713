#include "platform/network/download_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace nimbletype {
namespace {

std::unexpected<std::string> systemError(int error) {
  return std::unexpected(std::string(std::strerror(error)));
}

}  // namespace

DownloadFile::Result DownloadFile::open(const std::filesystem::path& path) {
  close();
  path_ = path;
  descriptor_ = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
  if (descriptor_ < 0) return systemError(errno);
  if (::flock(descriptor_, LOCK_EX | LOCK_NB) != 0) {
    const int error = errno;
    close();
    if (error == EWOULDBLOCK) return std::unexpected("another download is under way");
    return systemError(error);
  }
  size_ = ::lseek(descriptor_, 0, SEEK_END);
  return {};
}

DownloadFile::Result DownloadFile::cutTo(std::int64_t length) {
  if (!isStillThere())
    if (const auto opened = open(path_); !opened) return opened;
  if (length > size_) return systemError(EINVAL);
  if (length < size_ && ::ftruncate(descriptor_, length) != 0) return systemError(errno);
  size_ = ::lseek(descriptor_, length, SEEK_SET);
  return {};
}

DownloadFile::Result DownloadFile::append(std::string_view bytes) {
  while (!bytes.empty()) {
    const auto written = ::write(descriptor_, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return systemError(errno);
    size_ += written;
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return {};
}

void DownloadFile::close() {
  if (descriptor_ >= 0) ::close(descriptor_);  // gives up the lock as well
  descriptor_ = -1;
}

bool DownloadFile::isStillThere() const {
  struct stat opened {
  }, there{};
  return ::fstat(descriptor_, &opened) == 0 && ::stat(path_.c_str(), &there) == 0 &&
         opened.st_dev == there.st_dev && opened.st_ino == there.st_ino;
}

}  // namespace nimbletype
