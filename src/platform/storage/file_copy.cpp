#include "platform/storage/file_copy.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>

#include "platform/storage/descriptor.h"

namespace nimbletype {
namespace {

namespace fs = std::filesystem;

// Each piece is on the disk before the next is read, so that stopping never waits for more than one.
constexpr std::size_t pieceSize = 8U << 20U;

std::error_code lastError() {
  return {errno, std::generic_category()};
}

std::error_code copyContent(const Descriptor& in, const Descriptor& out, const std::atomic<bool>& cancelled) {
  std::string piece(pieceSize, '\0');
  while (true) {
    if (cancelled) return std::make_error_code(std::errc::operation_canceled);
    const auto count = ::read(in.get(), piece.data(), piece.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return lastError();
    if (count == 0) return {};
    if (!out.write({piece.data(), static_cast<std::size_t>(count)}) || !out.sync()) return lastError();
  }
}

std::error_code copyInto(const fs::path& from, const fs::path& to, const std::atomic<bool>& cancelled) {
  const Descriptor in(::open(from.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW));
  if (!in.isOpen()) return lastError();
  Descriptor out(
      ::open(to.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR));
  if (!out.isOpen()) return lastError();
  if (const auto error = copyContent(in, out, cancelled)) return error;
  return out.close() ? std::error_code() : lastError();
}

// A disk is not filled to the brim for a copy that cannot become whole.
std::error_code checkSpace(const fs::path& file, const fs::path& folder) {
  std::error_code error;
  const auto size = fs::file_size(file, error);
  if (error) return error;
  const auto space = fs::space(folder, error);
  return !error && space.available < size ? std::make_error_code(std::errc::no_space_on_device)
                                          : std::error_code();
}

std::error_code put(const fs::path& temporary, const fs::path& place) {
  std::error_code error;
  if (fs::exists(fs::symlink_status(place, error))) return std::make_error_code(std::errc::file_exists);
  fs::rename(temporary, place, error);
  if (!error) syncFolder(place.parent_path());
  return error;
}

}  // namespace

std::error_code copyWhole(const fs::path& from, const fs::path& to, const std::atomic<bool>& cancelled) {
  std::error_code error, ignored;
  fs::create_directories(to.parent_path(), error);
  if (!error) error = checkSpace(from, to.parent_path());
  if (error) return error;
  const auto temporary = to.parent_path() / ("." + to.filename().string() + ".copying");
  error = copyInto(from, temporary, cancelled);
  if (!error) error = put(temporary, to);
  if (error) fs::remove(temporary, ignored);
  return error;
}

}  // namespace nimbletype
