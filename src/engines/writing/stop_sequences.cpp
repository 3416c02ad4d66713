#include "engines/writing/stop_sequences.h"

namespace nimbletype {

std::optional<std::size_t> firstStop(std::string_view text, const std::vector<std::string>& stops) {
  std::optional<std::size_t> first;
  for (const auto& stop : stops) {
    if (stop.empty()) continue;
    const auto found = text.find(stop);
    if (found != std::string_view::npos && (!first || found < *first)) first = found;
  }
  return first;
}

}  // namespace nimbletype
