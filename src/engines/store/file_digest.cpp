#include "engines/store/file_digest.h"

#include <openssl/evp.h>

#include <cerrno>
#include <cstdio>
#include <memory>
#include <span>
#include <vector>

namespace nimbletype {
namespace {

constexpr std::size_t pieceSize = 8 << 20;

using File = std::unique_ptr<std::FILE, decltype([](std::FILE* file) { std::fclose(file); })>;
using Digest = std::unique_ptr<EVP_MD_CTX, decltype([](EVP_MD_CTX* context) { EVP_MD_CTX_free(context); })>;

std::unexpected<std::error_code> systemError() {
  return std::unexpected(std::error_code(errno != 0 ? errno : EIO, std::generic_category()));
}

std::string hex(std::span<const unsigned char> bytes) {
  constexpr char digits[] = "0123456789abcdef";
  std::string text;
  for (const unsigned char byte : bytes) {
    text += digits[byte >> 4];
    text += digits[byte & 15];
  }
  return text;
}

std::string finish(EVP_MD_CTX* digest) {
  unsigned char bytes[EVP_MAX_MD_SIZE];
  unsigned int length = 0;
  EVP_DigestFinal_ex(digest, bytes, &length);
  return hex({bytes, length});
}

}  // namespace

std::expected<std::string, std::error_code> sha256OfFile(const std::filesystem::path& file,
                                                         const std::atomic<bool>& cancelled) {
  errno = 0;
  const File stream(std::fopen(file.c_str(), "rb"));
  if (!stream) return systemError();
  std::setvbuf(stream.get(), nullptr, _IONBF, 0);
  const Digest digest(EVP_MD_CTX_new());
  if (!digest || !EVP_DigestInit_ex(digest.get(), EVP_sha256(), nullptr))
    return std::unexpected(std::make_error_code(std::errc::not_enough_memory));
  std::vector<unsigned char> piece(pieceSize);
  while (!cancelled) {
    const auto length = std::fread(piece.data(), 1, piece.size(), stream.get());
    EVP_DigestUpdate(digest.get(), piece.data(), length);
    if (std::ferror(stream.get())) return systemError();
    if (length < piece.size()) return finish(digest.get());
  }
  return std::unexpected(std::make_error_code(std::errc::operation_canceled));
}

}  // namespace nimbletype
