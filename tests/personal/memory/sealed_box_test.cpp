#include "personal/memory/sealed_box.h"

#include <gtest/gtest.h>

namespace nimbletype {
namespace {

std::optional<std::string> openedText(std::string_view box, const SecretBytes& key) {
  const auto plain = opened(box, key);
  return plain ? std::optional(std::string(plain->begin(), plain->end())) : std::nullopt;
}

TEST(SealedBox, OpensWithItsKeyAlone) {
  const SecretBytes key = newSealingKey();
  for (const std::string& plain : {std::string(), std::string("[]"), std::string(1'000'000, 'x')}) {
    const auto box = sealed(plain, key);
    ASSERT_TRUE(box);
    EXPECT_EQ(box->size(), plain.size() + 28);
    EXPECT_EQ(openedText(*box, key), plain);
    EXPECT_EQ(openedText(*box, newSealingKey()), std::nullopt);
    EXPECT_NE(sealed(plain, key), box) << "a nonce was used twice";
  }
  EXPECT_FALSE(sealed("x", SecretBytes(31)));
  EXPECT_FALSE(opened(*sealed("x", key), {}));
}

TEST(SealedBox, NoticesEveryBitAndEveryLength) {
  const SecretBytes key = newSealingKey();
  const std::string box = *sealed("[{\"text\":\"a\"}]", key);
  for (std::size_t bit = 0; bit < 8 * box.size(); ++bit) {
    std::string other = box;
    other[bit / 8] = static_cast<char>(other[bit / 8] ^ (1 << bit % 8));
    EXPECT_FALSE(opened(other, key)) << bit;
  }
  for (std::size_t size = 0; size < box.size(); ++size)
    EXPECT_FALSE(opened(box.substr(0, size), key)) << size;
  EXPECT_FALSE(opened(box + "x", key));
}

// AES-256-GCM of 16 zero bytes under a key and a nonce of zeroes, as published with the mode's definition.
TEST(SealedBox, IsWhatOthersUnderstand) {
  const std::string box = std::string(12, '\0') +
                          "\xce\xa7\x40\x3d\x4d\x60\x6b\x6e\x07\x4e\xc5\xd3\xba\xf3\x9d\x18"
                          "\xd0\xd1\xc8\xa7\x99\x99\x6b\xf0\x26\x5b\x98\xb5\xd4\x8a\xb9\x19";
  EXPECT_EQ(openedText(box, SecretBytes(32)), std::string(16, '\0'));
}

}  // namespace
}  // namespace nimbletype
