#pragma once
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string_view>

#include "personal/memory/passages.h"
#include "personal/memory/sealed_box.h"

namespace nimbletype {

// Entries as their file holds them once it is open: an array of objects with "appKey", "text" and "date" in
// seconds since the start of 2001, UTC.
nlohmann::ordered_json json(const MemoryEntry& entry);
SecretBytes encoded(const MemoryEntries& entries);
// What cannot be an entry is left out; none when it is no array at all. The oldest ones beyond the limit are
// dropped.
std::optional<MemoryEntries> decoded(std::string_view content);

}  // namespace nimbletype
