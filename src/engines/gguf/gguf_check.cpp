#include "engines/gguf/gguf_check.h"

#include <ggml.h>

#include <algorithm>
#include <bit>
#include <limits>
#include <set>

namespace nimbletype {
namespace {

using Fault = std::optional<std::string>;

constexpr std::int64_t mostLayers = 512;  // of llama.cpp
constexpr std::uint64_t defaultAlignment = 32;

std::uint64_t alignmentOf(const GgufHead& head) {
  const auto* alignment = head.number("general.alignment");
  return alignment ? static_cast<std::uint64_t>(*alignment) : defaultAlignment;
}

// Of a tensor's data; none when no memory could hold it.
std::optional<std::uint64_t> bytesOf(const GgufTensor& tensor) {
  const auto type = static_cast<ggml_type>(tensor.type);
  const auto block = static_cast<std::uint64_t>(ggml_blck_size(type));
  if (tensor.size[0] % block != 0) return std::nullopt;
  std::uint64_t bytes = ggml_type_size(type);
  for (const auto count : {tensor.size[0] / block, tensor.size[1], tensor.size[2], tensor.size[3]}) {
    if (count == 0 || count > std::numeric_limits<std::int64_t>::max() / bytes) return std::nullopt;
    bytes *= count;
  }
  return bytes;
}

bool isKnownType(std::uint32_t type) {
  return type < GGML_TYPE_COUNT && ggml_blck_size(static_cast<ggml_type>(type)) > 0;
}

Fault faultOf(const GgufTensor& tensor, std::uint64_t dataBytes, std::uint64_t alignment) {
  if (!isKnownType(tensor.type)) return "a tensor is of an unknown type";
  const auto bytes = bytesOf(tensor);
  if (!bytes) return "a tensor has an impossible size";
  if (tensor.offset % alignment != 0) return "a tensor is not aligned";
  if (tensor.offset > dataBytes || *bytes > dataBytes - tensor.offset) return "it ends too early";
  return std::nullopt;
}

Fault faultOfTensors(const GgufHead& head) {
  const auto alignment = alignmentOf(head);
  if (!std::has_single_bit(alignment) || alignment > (1U << 20)) return "its alignment is impossible";
  const auto start = (head.bytes + alignment - 1) / alignment * alignment;
  if (head.tensors.empty() || start > head.fileBytes) return "it has no tensors";
  std::set<std::string_view> names;
  for (const auto& tensor : head.tensors) {
    if (!names.insert(tensor.name).second) return "a tensor is there twice";
    if (auto fault = faultOf(tensor, head.fileBytes - start, alignment)) return fault;
  }
  return std::nullopt;
}

Fault faultOfProperties(const GgufHead& head) {
  if (const auto* parts = head.number("split.count"); parts && *parts > 1)
    return "it is a part of a model only";
  const auto named = head.properties.find("general.architecture");
  const auto* architecture =
      named == head.properties.end() ? nullptr : std::get_if<std::string>(&named->second);
  if (!architecture) return "it does not name its architecture";
  const auto* layers = head.number(*architecture + ".block_count");
  if (!layers || *layers < 1 || *layers > mostLayers) return "its number of layers is impossible";
  // Positions are turned in pairs; over none of them llama.cpp never ends.
  for (const char* key : {".rope.dimension_count", ".rope.dimension_count_swa"})
    if (const auto* turned = head.number(*architecture + key); turned && (*turned < 2 || *turned % 2 != 0))
      return "its positions are impossible";
  return std::nullopt;
}

}  // namespace

std::optional<std::string> faultOf(const GgufHead& head) {
  if (auto fault = faultOfProperties(head)) return fault;
  return faultOfTensors(head);
}

std::optional<std::string> faultOfModelFile(const std::string& path) {
  const auto head = readGgufHead(path);
  return head ? faultOf(*head) : head.error();
}

}  // namespace nimbletype
