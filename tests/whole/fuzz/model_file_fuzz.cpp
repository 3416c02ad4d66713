// Whatever a model file holds, opening it ends in a model or in a sentence, never in the end of the process.
#include <unistd.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <random>
#include <string>

#include "engines/llama/llama_model.h"

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t most);

namespace {

// Numbers that make sizes overflow, and divisors and counts nothing.
constexpr std::array<std::uint64_t, 14> oddNumbers{
    0, 1, 2, 3, 7, 31, 255, 4096, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF, 0x7FFFFFFFFFFFFFFF, 1ULL << 63, ~0ULL};

const std::string& scratchFile() {
  static const std::string path = "/dev/shm/model-file-fuzz-" + std::to_string(getpid()) + ".gguf";
  return path;
}

// The head takes the first of these bytes; what follows are weights, which may be anything anyway.
constexpr std::size_t headBytes = 4096;

}  // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t most,
                                               unsigned int seed) {
  std::minstd_rand random(seed);
  if (size < 32 || random() % 8 == 0) return LLVMFuzzerMutate(data, size, most);
  const std::size_t head = std::min(size, headBytes);
  const std::size_t width = random() % 2 == 0 ? 4 : 8;
  const std::size_t at = random() % (head - width);
  if (random() % 2 == 0) {
    const auto number = oddNumbers[random() % oddNumbers.size()];
    std::memcpy(data + at, &number, width);
  } else {
    data[at] = static_cast<std::uint8_t>(random());
  }
  return size;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace nimbletype;
  std::ofstream(scratchFile(), std::ios::binary)
      .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
  ModelOptions options;
  options.contextSize = 64;
  options.threads = 1;
  const auto model = LlamaModel::load(scratchFile(), options);
  if (model) (*model)->vocabulary().tokens("abc\n");
  unlink(scratchFile().c_str());
  return 0;
}
