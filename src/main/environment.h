#pragma once
#include <optional>
#include <string>

namespace nimbletype {

// What the environment says under this name; an empty word says nothing.
std::optional<std::string> environment(const char* name);

// The GGUF file that the environment names.
std::optional<std::string> modelInEnvironment();

// Whether the environment asks for an intro without sound.
bool isLocalOnly();

}  // namespace nimbletype
