#include "engines/gguf/gguf_check.h"

#include <gmock/gmock.h>

#include <fstream>
#include <functional>

#include "tools/stage/temporary_folder.h"

namespace nimbletype {
namespace {

constexpr std::uint32_t float32 = 0;  // of ggml

GgufHead goodHead() {
  GgufHead head;
  head.properties = {{"general.architecture", "llama"}, {"llama.block_count", std::int64_t{2}}};
  head.tensors = {{"a", {32, 2, 1, 1}, float32, 0}, {"b", {8, 1, 1, 1}, float32, 256}};
  head.bytes = 1000;
  head.fileBytes = 1024 + 256 + 32;
  return head;
}

TEST(GgufCheck, KnowsWhatIsWrongWithAHead) {
  EXPECT_EQ(faultOf(goodHead()), std::nullopt);
  const std::vector<std::pair<std::string, std::function<void(GgufHead&)>>> table{
      {"it ends too early", [](auto& h) { --h.fileBytes; }},
      {"it ends too early", [](auto& h) { h.tensors[1].offset = ~std::uint64_t{31}; }},
      {"it has no tensors", [](auto& h) { h.tensors.clear(); }},
      {"it has no tensors", [](auto& h) { h.bytes = h.fileBytes + 1; }},
      {"a tensor is there twice", [](auto& h) { h.tensors[1].name = "a"; }},
      {"a tensor is not aligned", [](auto& h) { h.tensors[1].offset = 252; }},
      {"a tensor is of an unknown type", [](auto& h) { h.tensors[0].type = 4; }},
      {"a tensor is of an unknown type", [](auto& h) { h.tensors[0].type = ~0U; }},
      {"a tensor has an impossible size", [](auto& h) { h.tensors[0].size[1] = 0; }},
      {"a tensor has an impossible size",
       [](auto& h) { h.tensors[0].size[0] = h.tensors[0].size[1] = 1ULL << 32; }},
      {"a tensor has an impossible size", [](auto& h) { h.tensors[1].type = 8; }},  // blocks of 32
      {"its alignment is impossible", [](auto& h) { h.properties["general.alignment"] = std::int64_t{0}; }},
      {"its alignment is impossible", [](auto& h) { h.properties["general.alignment"] = std::int64_t{48}; }},
      {"it is a part of a model only", [](auto& h) { h.properties["split.count"] = std::int64_t{3}; }},
      {"it does not name its architecture", [](auto& h) { h.properties.erase("general.architecture"); }},
      {"its number of layers is impossible",
       [](auto& h) { h.properties["llama.block_count"] = std::int64_t{513}; }},
      {"its positions are impossible",
       [](auto& h) { h.properties["llama.rope.dimension_count"] = std::int64_t{0}; }},
  };
  for (const auto& [fault, damage] : table) {
    auto head = goodHead();
    damage(head);
    EXPECT_EQ(faultOf(head), fault);
  }
}

TEST(GgufCheck, FindsNoFaultInModels) {
  for (const std::string path : {"models/starter/starter-q8_0.gguf", SLIDING_WINDOW_MODEL})
    EXPECT_EQ(faultOfModelFile(path), std::nullopt) << path;
}

template <typename T>
std::string bytes(T value) {
  return std::string(reinterpret_cast<const char*>(&value), sizeof value);
}

// Counts and lengths that the file cannot hold must cost neither time nor memory.
TEST(GgufCheck, BelievesNoCountThatTheFileCannotHold) {
  const auto start = "GGUF" + bytes(3U) + bytes(std::uint64_t{0});
  const auto one = start + bytes(std::uint64_t{1}), huge = bytes(std::uint64_t{1} << 62);
  const auto key = bytes(std::uint64_t{1}) + "k";
  constexpr std::uint32_t string = 8, array = 9, int64 = 11;
  const std::vector<std::pair<std::string, std::string>> table{
      {"it ends too early", "GGUF" + bytes(3U) + huge},
      {"it ends too early", start + huge},
      {"a name in it is too long", one + huge + std::string(32, '\0')},
      {"it ends too early", one + key + bytes(string) + huge},
      {"it ends too early", one + key + bytes(array) + bytes(int64) + huge},
      {"it ends too early", one + key + bytes(array) + bytes(string) + bytes(std::uint64_t{1}) + huge},
      {"a property is of an unknown type", one + key + bytes(array) + bytes(array) + huge},
      {"a property is of an unknown type", one + key + bytes(13U) + huge},
      {"it is of an unknown version", "GGUF" + bytes(1U) + huge + huge},
  };
  const TemporaryFolder folder;
  const auto path = (folder.path / "model.gguf").string();
  for (const auto& [fault, content] : table) {
    std::ofstream(path, std::ios::binary) << content;
    EXPECT_EQ(faultOfModelFile(path), fault);
  }
}

}  // namespace
}  // namespace nimbletype
