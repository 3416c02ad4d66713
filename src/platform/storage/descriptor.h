#pragma once
#include <filesystem>
#include <string_view>

namespace nimbletype {

// Owner of an open file. Calls that fail leave the reason in errno.
class Descriptor {
 public:
  explicit Descriptor(int fd) : fd_(fd) {}
  ~Descriptor() { close(); }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  bool isOpen() const { return fd_ >= 0; }
  int get() const { return fd_; }
  bool write(std::string_view bytes) const;
  // What was written is on the disk itself.
  bool sync() const;
  bool close();

 private:
  int fd_;
};

// Without this a power cut may bring the folder's old name table back.
void syncFolder(const std::filesystem::path& folder);

}  // namespace nimbletype
