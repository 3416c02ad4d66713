#pragma once
#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace nimbletype {

using Ip4Address = std::array<std::uint8_t, 4>;
using Ip6Address = std::array<std::uint16_t, 8>;

// Four decimal numbers without leading zeros, which some programs would read as octal.
std::optional<Ip4Address> parseIp4(std::string_view text);
// The written forms, with "::" and with an IPv4 address at the end; a zone behind "%" is left out.
std::optional<Ip6Address> parseIp6(std::string_view text);

}  // namespace nimbletype
