#pragma once
#include <cstdlib>
#include <filesystem>
#include <string>

namespace nimbletype {

// An empty folder that is gone when the object is.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    auto name = (std::filesystem::temp_directory_path() / "nimbletype-XXXXXX").string();
    path = ::mkdtemp(name.data());
  }
  ~TemporaryFolder() {
    std::error_code error;
    std::filesystem::remove_all(path, error);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  std::filesystem::path path;
};

}  // namespace nimbletype
