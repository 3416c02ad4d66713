#pragma once
#include <optional>
#include <string>

#include "engines/gguf/gguf_head.h"

namespace nimbletype {

// What keeps a file from being a whole model that llama.cpp can be trusted with; none for a good one. Damaged
// and crafted files must not reach it: it ends the process, or reads past its memory, over some of them.
std::optional<std::string> faultOf(const GgufHead& head);
std::optional<std::string> faultOfModelFile(const std::string& path);

}  // namespace nimbletype
