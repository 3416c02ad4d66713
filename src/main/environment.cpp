#include "main/environment.h"

#include <cstdlib>

namespace nimbletype {

std::optional<std::string> environment(const char* name) {
  const char* value = std::getenv(name);
  return value && *value ? std::optional<std::string>(value) : std::nullopt;
}

std::optional<std::string> modelInEnvironment() {
  return environment("NIMBLETYPE_MODEL");
}

bool isLocalOnly() {
  return environment("NIMBLETYPE_LOCAL_ONLY") == "1";
}

}  // namespace nimbletype
