#include "engines/gguf/gguf_head.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <utility>

namespace nimbletype {
namespace {

static_assert(std::endian::native == std::endian::little, "model files are little-endian");

enum Type : std::uint32_t {
  uint8,
  int8,
  uint16,
  int16,
  uint32,
  int32,
  float32,
  boolean,
  string,
  array,
  uint64,
  int64,
  float64
};

constexpr std::uint64_t longestName = 65'535, longestKeptList = 512, mostDimensions = 4;

struct Malformed : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// Reads from the front and never past the end; lengths in the file are only believed as far as the file goes.
class Reader {
 public:
  Reader(const std::string& path, std::uint64_t bytes) : file_(path, std::ios::binary), bytes_(bytes) {}

  void raw(void* to, std::uint64_t count) {
    need(count);
    if (!file_.read(static_cast<char*>(to), static_cast<std::streamsize>(count)))
      throw Malformed("it can't be read");
    at_ += count;
  }
  void skip(std::uint64_t count) {
    need(count);
    if (!file_.ignore(static_cast<std::streamsize>(count))) throw Malformed("it can't be read");
    at_ += count;
  }
  template <typename T>
  T value() {
    T read;
    raw(&read, sizeof read);
    return read;
  }
  std::string text(std::uint64_t longest) {
    const auto length = value<std::uint64_t>();
    if (length > longest) throw Malformed("a name in it is too long");
    need(length);
    std::string read(length, '\0');
    raw(read.data(), length);
    return read;
  }
  // How many of something that takes at least `bytes` each.
  std::uint64_t count(std::uint64_t bytes) {
    const auto read = value<std::uint64_t>();
    if (read > (bytes_ - at_) / bytes) throw Malformed("it ends too early");
    return read;
  }
  std::uint64_t at() const { return at_; }

 private:
  void need(std::uint64_t count) const {
    if (count > bytes_ - at_) throw Malformed("it ends too early");
  }

  std::ifstream file_;
  std::uint64_t bytes_, at_ = 0;
};

std::uint64_t bytesOf(std::uint32_t type) {
  switch (type) {
    case uint8:
    case int8:
    case boolean:
      return 1;
    case uint16:
    case int16:
      return 2;
    case uint32:
    case int32:
    case float32:
      return 4;
    case uint64:
    case int64:
    case float64:
    case string:  // its length
      return 8;
    default:
      throw Malformed("a property is of an unknown type");
  }
}

template <typename T>
std::int64_t whole(Reader& reader) {
  return static_cast<std::int64_t>(reader.value<T>());
}

std::int64_t number(Reader& reader, std::uint32_t type) {
  switch (type) {
    case uint8:
      return whole<std::uint8_t>(reader);
    case int8:
      return whole<std::int8_t>(reader);
    case uint16:
      return whole<std::uint16_t>(reader);
    case int16:
      return whole<std::int16_t>(reader);
    case uint32:
      return whole<std::uint32_t>(reader);
    case int32:
      return whole<std::int32_t>(reader);
    default:
      return whole<std::int64_t>(reader);
  }
}

bool isWhole(std::uint32_t type) {
  return type <= int32 || type == uint64 || type == int64;
}

GgufArray list(Reader& reader) {
  GgufArray read{reader.value<std::uint32_t>(), 0, {}};
  read.count = reader.count(bytesOf(read.type));
  if (read.type == string) {
    for (std::uint64_t i = 0; i < read.count; ++i) reader.skip(reader.value<std::uint64_t>());
  } else if (isWhole(read.type) && read.count <= longestKeptList) {
    for (std::uint64_t i = 0; i < read.count; ++i) read.numbers.push_back(number(reader, read.type));
  } else {
    reader.skip(read.count * bytesOf(read.type));
  }
  return read;
}

GgufValue property(Reader& reader) {
  const auto type = reader.value<std::uint32_t>();
  if (type == array) return list(reader);
  if (type == string) return reader.text(UINT64_MAX);
  if (type == boolean) return reader.value<std::uint8_t>() != 0;
  if (type == float32) return static_cast<double>(reader.value<float>());
  if (type == float64) return reader.value<double>();
  bytesOf(type);
  return number(reader, type);
}

GgufTensor tensor(Reader& reader) {
  GgufTensor read;
  read.name = reader.text(longestName);
  const auto dimensions = reader.value<std::uint32_t>();
  if (dimensions > mostDimensions) throw Malformed("a tensor has too many dimensions");
  for (std::uint32_t i = 0; i < dimensions; ++i) read.size[i] = reader.value<std::uint64_t>();
  read.type = reader.value<std::uint32_t>();
  read.offset = reader.value<std::uint64_t>();
  return read;
}

GgufHead head(Reader& reader) {
  GgufHead read;
  std::array<char, 4> magic{};
  reader.raw(magic.data(), magic.size());
  if (std::memcmp(magic.data(), "GGUF", magic.size()) != 0) throw Malformed("it is no model file");
  if (const auto version = reader.value<std::uint32_t>(); version < 2 || version > 3)
    throw Malformed("it is of an unknown version");
  const auto tensors = reader.count(8 + 4 + 4 + 8);
  const auto properties = reader.count(8 + 4 + 1);
  for (std::uint64_t i = 0; i < properties; ++i) {
    auto key = reader.text(longestName);
    if (!read.properties.emplace(std::move(key), property(reader)).second)
      throw Malformed("a property is there twice");
  }
  for (std::uint64_t i = 0; i < tensors; ++i) read.tensors.push_back(tensor(reader));
  read.bytes = reader.at();
  return read;
}

}  // namespace

const std::int64_t* GgufHead::number(std::string_view key) const {
  const auto found = properties.find(key);
  return found == properties.end() ? nullptr : std::get_if<std::int64_t>(&found->second);
}

std::expected<GgufHead, std::string> readGgufHead(const std::string& path) try {
  std::error_code error;
  if (!std::filesystem::is_regular_file(path, error)) return std::unexpected("it is no file");
  const auto bytes = std::filesystem::file_size(path, error);
  if (error) return std::unexpected("it can't be read");
  Reader reader(path, bytes);
  auto read = head(reader);
  read.fileBytes = bytes;
  return read;
} catch (const std::exception& error) {
  return std::unexpected(error.what());
}

}  // namespace nimbletype
