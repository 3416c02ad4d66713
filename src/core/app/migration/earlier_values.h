#pragma once
#include <expected>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/storage/defaults_store.h"
#include "platform/storage/secret_store.h"

namespace nimbletype {

// The earlier product's settings that are settings here as well, of the same type, and have no value here
// yet.
std::vector<std::pair<std::string, DefaultsValue>> settingsToTake(const DefaultsStore& earlier,
                                                                  DefaultsStore& ours);

// What is to be done with the earlier product's memory, after both stores were asked for its key.
enum class MemoryMove {
  keyThenFile,
  file,      // the key is here
  setAside,  // nobody has the key, or there is another one here
  nothing,   // whether there is a key is not to be known now
};
using FoundSecret = std::expected<std::optional<std::string>, SecretFailure>;
MemoryMove memoryMove(const FoundSecret& earlierKey, const FoundSecret& ourKey);

}  // namespace nimbletype
