#pragma once
#include <openssl/crypto.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// AES-256 in Galois/Counter Mode: whoever lacks the key can neither read what is sealed nor change it
// unnoticed.
namespace nimbletype {

// Overwrites memory before it gives it back.
template <typename T>
struct WipingAllocator {
  using value_type = T;
  WipingAllocator() = default;
  template <typename U>
  WipingAllocator(const WipingAllocator<U>&) {}
  T* allocate(std::size_t count) { return std::allocator<T>().allocate(count); }
  void deallocate(T* memory, std::size_t count) {
    OPENSSL_cleanse(memory, count * sizeof(T));
    std::allocator<T>().deallocate(memory, count);
  }
  bool operator==(const WipingAllocator&) const = default;
};

// Bytes that leave no copy behind when they go.
using SecretBytes = std::vector<char, WipingAllocator<char>>;

inline constexpr std::size_t sealingKeySize = 32, sealNonceSize = 12, sealTagSize = 16;

SecretBytes newSealingKey();
// The nonce, made anew for each box, then as many bytes as `plain` has, then the tag. None when the system
// has no randomness or memory to give.
std::optional<std::string> sealed(std::string_view plain, const SecretBytes& key);
// None when this key did not seal it, or when a single bit of it is another.
std::optional<SecretBytes> opened(std::string_view box, const SecretBytes& key);

}  // namespace nimbletype
