#pragma once
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace nimbletype {

// Where the earliest of the stop sequences begins in `text`. An empty sequence never matches.
std::optional<std::size_t> firstStop(std::string_view text, const std::vector<std::string>& stops);

}  // namespace nimbletype
