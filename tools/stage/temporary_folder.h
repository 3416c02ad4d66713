#pragma once
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>

namespace nimbletype {

// An empty folder that is gone when the object is.
class TemporaryFolder {
 public:
  explicit TemporaryFolder(const std::filesystem::path& parent = std::filesystem::temp_directory_path()) {
    auto name = (parent / "nimbletype-XXXXXX").string();
    if (!::mkdtemp(name.data())) throw std::runtime_error("cannot make a folder like " + name);
    path = name;
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
