#pragma once
#include <chrono>
#include <optional>
#include <string>
#include <string_view>

// Moments as ISO 8601 text, the form in which files that people may open hold them.
namespace nimbletype::text {

using Moment = std::chrono::sys_time<std::chrono::milliseconds>;

// In UTC, such as "2025-03-07T09:00:00Z"; with three digits of a second only when it is not whole.
std::string toIso8601(Moment moment);
// Any offset, with or without a fraction of a second; none for what is no moment.
std::optional<Moment> fromIso8601(std::string_view s);

}  // namespace nimbletype::text
