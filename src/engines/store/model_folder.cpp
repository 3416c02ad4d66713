#include "engines/store/model_folder.h"

#include <cerrno>
#include <fstream>
#include <string>
#include <utility>

namespace nimbletype {
namespace {

namespace fs = std::filesystem;

// -1 when there is no such file.
std::int64_t sizeOf(const fs::path& file) {
  std::error_code error;
  const auto size = fs::file_size(file, error);
  return error ? -1 : static_cast<std::int64_t>(size);
}

// Whether the file holds this text and nothing else.
bool holds(const fs::path& file, const std::string& text) {
  std::ifstream stream(file, std::ios::binary);
  std::string content(text.size() + 1, '\0');
  stream.read(content.data(), static_cast<std::streamsize>(content.size()));
  content.resize(static_cast<std::size_t>(stream.gcount()));
  return content == text;
}

std::error_code writeText(const fs::path& file, const std::string& text) {
  errno = 0;
  std::ofstream stream(file, std::ios::binary);
  stream << text;
  stream.close();
  if (stream) return {};
  return errno != 0 ? std::error_code(errno, std::generic_category())
                    : std::make_error_code(std::errc::io_error);
}

std::error_code moveFile(const fs::path& from, const fs::path& to) {
  std::error_code error;
  fs::rename(from, to, error);
  return error;
}

std::error_code deleteFile(const fs::path& file) {
  std::error_code error;
  fs::remove(file, error);
  return error;
}

}  // namespace

ModelFolder::ModelFolder(fs::path folder, const ModelSpec& spec) : folder_(std::move(folder)), spec_(spec) {}

fs::path ModelFolder::marker() const {
  return folder_ / (spec_.fileName + ".verified");
}
fs::path ModelFolder::incoming() const {
  return folder_ / (".incoming-" + spec_.fileName);
}
fs::path ModelFolder::partial() const {
  return folder_ / (".partial-" + spec_.fileName);
}
fs::path ModelFolder::note() const {
  return folder_ / (".partial-" + spec_.fileName + ".json");
}

bool ModelFolder::isComplete(const fs::path& file) const {
  return sizeOf(file) == spec_.size;
}

bool ModelFolder::isInstalled() const {
  return isComplete(model()) && holds(marker(), spec_.digest);
}

std::int64_t ModelFolder::resumableBytes() const {
  const auto size = sizeOf(partial());
  if (size <= 0 || size > spec_.size) return 0;
  const auto resumable = readResumeNote(note());
  return resumable && resumable->url == spec_.address && resumable->digest == spec_.digest ? size : 0;
}

bool ModelFolder::findIncoming() const {
  if (isComplete(incoming())) return true;
  removeIncoming();
  if (resumableBytes() == spec_.size) return !moveToIncoming();
  // The marker may have been all that was left to write.
  std::error_code error;
  const bool isMarked = fs::exists(marker(), error) || error;
  return !isMarked && isComplete(model()) && !moveFile(model(), incoming());
}

std::error_code ModelFolder::create() const {
  std::error_code error;
  fs::create_directories(folder_, error);
  return error;
}

std::error_code ModelFolder::moveToIncoming() const {
  const auto error = moveFile(partial(), incoming());
  if (!error) deleteFile(note());
  return error;
}

std::error_code ModelFolder::install() const {
  const bool isMarked = holds(marker(), spec_.digest);
  if (!isMarked) deleteFile(marker());  // of another version: it must never stand beside this one
  if (const auto error = moveFile(incoming(), model()))
    return isInstalled() ? std::error_code() : error;  // another process may have been faster
  removePartial();
  return isMarked ? std::error_code() : writeText(marker(), spec_.digest);
}

void ModelFolder::removeIncoming() const {
  deleteFile(incoming());
}

void ModelFolder::removePartial() const {
  deleteFile(note());
  deleteFile(partial());
}

void ModelFolder::emptyPartial() const {
  deleteFile(note());
  std::error_code error;
  fs::resize_file(partial(), 0, error);
}

std::error_code ModelFolder::removeModel() const {
  removeIncoming();
  removePartial();
  deleteFile(marker());
  return deleteFile(model());
}

}  // namespace nimbletype
