#pragma once
#include <cstddef>
#include <string>

#include "personal/memory/memory_vault.h"

namespace nimbletype {

// How the memory is doing, for the settings window.
struct MemoryState {
  enum class Case { loading, ready, paused };
  Case state = Case::loading;
  std::string problem{};  // one sentence; empty while all is well
  bool operator==(const MemoryState&) const = default;
};

// What to tell the user of a failure.
std::string sentenceFor(VaultFailure failure);

// "Nothing remembered yet", "1 passage remembered", "2 passages remembered"
std::string rememberedText(std::size_t count);
// "1 passage from here", "2 passages from here"
std::string fromHereText(std::size_t count);

}  // namespace nimbletype
