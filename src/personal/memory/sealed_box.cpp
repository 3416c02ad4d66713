#include "personal/memory/sealed_box.h"

#include <openssl/evp.h>
#include <openssl/rand.h>

#include <limits>

namespace nimbletype {
namespace {

using Cipher = std::unique_ptr<EVP_CIPHER_CTX, decltype([](EVP_CIPHER_CTX* c) { EVP_CIPHER_CTX_free(c); })>;

unsigned char* bytes(char* text) {
  return reinterpret_cast<unsigned char*>(text);
}
const unsigned char* bytes(const char* text) {
  return reinterpret_cast<const unsigned char*>(text);
}

// OpenSSL counts in int.
bool isUsable(std::size_t size, const SecretBytes& key) {
  return key.size() == sealingKeySize && size <= std::numeric_limits<int>::max();
}

}  // namespace

SecretBytes newSealingKey() {
  SecretBytes key(sealingKeySize);
  if (RAND_priv_bytes(bytes(key.data()), static_cast<int>(key.size())) != 1) key.clear();
  return key;
}

std::optional<std::string> sealed(std::string_view plain, const SecretBytes& key) {
  if (!isUsable(plain.size(), key)) return std::nullopt;
  std::string box(sealNonceSize + plain.size() + sealTagSize, '\0');
  unsigned char* const nonce = bytes(box.data());
  unsigned char* const text = nonce + sealNonceSize;
  const Cipher cipher(EVP_CIPHER_CTX_new());
  int length = 0;
  const bool done =
      cipher && RAND_bytes(nonce, sealNonceSize) == 1 &&
      EVP_EncryptInit_ex(cipher.get(), EVP_aes_256_gcm(), nullptr, bytes(key.data()), nonce) == 1 &&
      EVP_EncryptUpdate(cipher.get(), text, &length, bytes(plain.data()), static_cast<int>(plain.size())) ==
          1 &&
      EVP_EncryptFinal_ex(cipher.get(), text + length, &length) == 1 &&
      EVP_CIPHER_CTX_ctrl(cipher.get(), EVP_CTRL_GCM_GET_TAG, sealTagSize, text + plain.size()) == 1;
  return done ? std::optional(std::move(box)) : std::nullopt;
}

std::optional<SecretBytes> opened(std::string_view box, const SecretBytes& key) {
  if (box.size() < sealNonceSize + sealTagSize || !isUsable(box.size(), key)) return std::nullopt;
  const std::size_t size = box.size() - sealNonceSize - sealTagSize;
  const unsigned char* const text = bytes(box.data()) + sealNonceSize;
  std::string tag(box.substr(box.size() - sealTagSize));
  SecretBytes plain(size + 1);  // OpenSSL wants a place even for nothing
  const Cipher cipher(EVP_CIPHER_CTX_new());
  int length = 0;
  const bool done =
      cipher &&
      EVP_DecryptInit_ex(cipher.get(), EVP_aes_256_gcm(), nullptr, bytes(key.data()), bytes(box.data())) ==
          1 &&
      EVP_DecryptUpdate(cipher.get(), bytes(plain.data()), &length, text, static_cast<int>(size)) == 1 &&
      EVP_CIPHER_CTX_ctrl(cipher.get(), EVP_CTRL_GCM_SET_TAG, sealTagSize, tag.data()) == 1 &&
      EVP_DecryptFinal_ex(cipher.get(), bytes(plain.data()) + length, &length) == 1;
  if (!done) return std::nullopt;
  plain.resize(size);
  return plain;
}

}  // namespace nimbletype
