#pragma once
#include <filesystem>
#include <string_view>

#include "platform/storage/file_store.h"

namespace nimbletype {

// A file that is whole at every moment: new content is written beside it, reaches the disk and takes its
// place.
class AtomicFile : public FileStore {
 public:
  // What the name of a file that was set aside ends with, before a number if there are more.
  static constexpr std::string_view asideEnd = ".unreadable";

  explicit AtomicFile(std::filesystem::path path) : path_(std::move(path)) {}

  std::optional<std::string> read() const override;
  // Makes missing folders. A link keeps pointing where it did; the file is for its owner's eyes only.
  bool write(const std::string& content) override;
  bool setAside() override;
  bool erase() override;

 private:
  std::filesystem::path path_;
};

}  // namespace nimbletype
