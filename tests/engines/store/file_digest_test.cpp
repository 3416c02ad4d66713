#include "engines/store/file_digest.h"

#include <gtest/gtest.h>
#include <openssl/evp.h>

#include <fstream>

#include "tools/stage/temporary_folder.h"

namespace nimbletype {
namespace {

std::string contentOf(std::size_t length) {
  std::string content(length, '\0');
  for (std::size_t i = 0; i < length; ++i) content[i] = static_cast<char>(i * 7 + i / 251);
  return content;
}

// The same at one go.
std::string expected(const std::string& content) {
  unsigned char digest[EVP_MAX_MD_SIZE];
  unsigned int length = 0;
  EVP_Digest(content.data(), content.size(), digest, &length, EVP_sha256(), nullptr);
  std::string hex(std::size_t{length} * 2 + 1, '\0');
  for (unsigned int i = 0; i < length; ++i) std::snprintf(&hex[i * std::size_t{2}], 3, "%02x", digest[i]);
  hex.pop_back();
  return hex;
}

class FileDigestTest : public testing::Test {
 protected:
  TemporaryFolder folder;
  std::filesystem::path file = folder.path / "file";
  std::atomic<bool> cancelled = false;
};

TEST_F(FileDigestTest, IsTheSameHoweverTheFileIsCutIntoPieces) {
  constexpr std::size_t piece = 8 << 20;
  for (const std::size_t length : {std::size_t{0}, std::size_t{3}, piece - 1, piece, piece + 1, 2 * piece}) {
    const auto content = contentOf(length);
    std::ofstream(file, std::ios::binary) << content;
    EXPECT_EQ(sha256OfFile(file, cancelled), expected(content)) << length;
  }
}

TEST_F(FileDigestTest, SaysWhyThereIsNone) {
  EXPECT_EQ(sha256OfFile(file, cancelled).error(), std::errc::no_such_file_or_directory);
  EXPECT_EQ(sha256OfFile(folder.path, cancelled).error(), std::errc::is_a_directory);
  std::ofstream(file) << "x";
  cancelled = true;
  EXPECT_EQ(sha256OfFile(file, cancelled).error(), std::errc::operation_canceled);
}

}  // namespace
}  // namespace nimbletype
