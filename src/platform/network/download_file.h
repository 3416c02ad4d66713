#pragma once
#include <cstdint>
#include <expected>
#include <filesystem>
#include <string>
#include <string_view>

namespace nimbletype {

// The file that a download is appended to. While it is open no other download, of this process or another,
// can open it. Errors are the system's own words. May be used on any one thread.
class DownloadFile {
 public:
  using Result = std::expected<void, std::string>;

  DownloadFile() = default;
  ~DownloadFile() { close(); }
  DownloadFile(const DownloadFile&) = delete;
  DownloadFile& operator=(const DownloadFile&) = delete;

  // Makes the file when it is missing and leaves it as it is otherwise.
  Result open(const std::filesystem::path& path);
  // Cuts it to `length`, at most what it has; what is appended comes behind. Opens it anew when somebody has
  // removed it meanwhile.
  Result cutTo(std::int64_t length);
  // At once in the hands of the system.
  Result append(std::string_view bytes);
  void close();
  std::int64_t size() const { return size_; }

 private:
  bool isStillThere() const;

  std::filesystem::path path_;
  int descriptor_ = -1;
  std::int64_t size_ = 0;
};

}  // namespace nimbletype
