#pragma once
#include <array>
#include <cstdint>
#include <expected>
#include <map>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace nimbletype {

// A list among a model's properties. Only short lists of whole numbers are kept.
struct GgufArray {
  std::uint32_t type = 0;
  std::uint64_t count = 0;
  std::vector<std::int64_t> numbers;
};

// Whole numbers beyond 2^63 wrap around to negative ones, which no property may be.
using GgufValue = std::variant<std::int64_t, double, bool, std::string, GgufArray>;

struct GgufTensor {
  std::string name;
  std::array<std::uint64_t, 4> size{1, 1, 1, 1};
  std::uint32_t type = 0;    // of ggml
  std::uint64_t offset = 0;  // in bytes, from the beginning of the data
};

// What stands before a model file's data.
struct GgufHead {
  std::map<std::string, GgufValue, std::less<>> properties;
  std::vector<GgufTensor> tensors;
  std::uint64_t bytes = 0;      // of the head, without what pads it
  std::uint64_t fileBytes = 0;  // of the whole file

  // None when there is no such whole number.
  const std::int64_t* number(std::string_view key) const;
};

// Reads no more than the file's head and takes no more memory than that; the error says what is wrong with
// it.
std::expected<GgufHead, std::string> readGgufHead(const std::string& path);

}  // namespace nimbletype
