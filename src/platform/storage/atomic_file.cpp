#include "platform/storage/atomic_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <vector>

#include "platform/storage/descriptor.h"

namespace nimbletype {
namespace {

namespace fs = std::filesystem;

bool writeWhole(int fd, const std::string& content) {
  Descriptor file(fd);
  return file.isOpen() && file.write(content) && file.sync() && file.close();
}

fs::path behindLinks(const fs::path& path) {
  std::error_code error;
  const auto target = fs::weakly_canonical(path, error);
  return error ? path : target;
}

std::string temporaryStart(const fs::path& target) {
  return "." + target.filename().string() + ".";
}

std::vector<fs::path> filesIn(const fs::path& folder) {
  std::vector<fs::path> files;
  std::error_code error;
  for (const auto& entry : fs::directory_iterator(folder, error)) files.push_back(entry.path());
  return files;
}

}  // namespace

std::optional<std::string> AtomicFile::read() const {
  std::error_code error;
  if (!fs::is_regular_file(path_, error)) return std::nullopt;
  std::ifstream in(path_, std::ios::binary);
  std::string content(std::istreambuf_iterator<char>(in), {});
  if (!in) return std::nullopt;
  return content;
}

bool AtomicFile::write(const std::string& content) {
  const auto target = behindLinks(path_);
  std::error_code error;
  fs::create_directories(target.parent_path(), error);
  auto temporary = (target.parent_path() / (temporaryStart(target) + "XXXXXX")).string();
  const int fd = ::mkstemp(temporary.data());
  if (fd < 0) return false;
  if (!writeWhole(fd, content) || std::rename(temporary.c_str(), target.c_str()) != 0) {
    ::unlink(temporary.c_str());
    return false;
  }
  syncFolder(target.parent_path());
  return true;
}

bool AtomicFile::setAside() {
  // An earlier file set aside is not lost to a later one.
  std::error_code error;
  auto aside = path_;
  aside += asideEnd;
  for (int n = 2; fs::exists(aside, error); ++n)
    (aside = path_) += std::string(asideEnd) + "-" + std::to_string(n);
  fs::rename(path_, aside, error);
  return !fs::exists(fs::symlink_status(path_, error));
}

// What a write that was cut short left behind goes as well.
bool AtomicFile::erase() {
  const auto target = behindLinks(path_);
  std::vector<fs::path> all{path_, target};
  for (const auto& folder : {path_.parent_path(), target.parent_path()})
    std::ranges::copy_if(filesIn(folder), std::back_inserter(all), [&](const fs::path& file) {
      const auto name = file.filename().string();
      return name.starts_with(path_.filename().string() + std::string(asideEnd)) ||
             name.starts_with(temporaryStart(target));
    });
  for (const auto& file : all) {
    std::error_code error;
    fs::remove(file, error);
  }
  return std::ranges::none_of(all, [](const fs::path& file) {
    std::error_code error;
    return fs::exists(fs::symlink_status(file, error));
  });
}

}  // namespace nimbletype
