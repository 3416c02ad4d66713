#include "engines/address/ip_address.h"

#include <algorithm>
#include <charconv>
#include <string>
#include <vector>

namespace nimbletype {
namespace {

using Groups = std::vector<std::uint16_t>;

// The whole text as one number of at most `longest` digits.
std::optional<std::uint16_t> number(std::string_view text, int base, std::size_t longest) {
  std::uint16_t value = 0;
  const auto* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value, base);
  if (error != std::errc() || stop != end || text.size() > longest) return std::nullopt;
  return value;
}

// The text before the next separator, which is cut off as well.
std::string_view takePart(std::string_view& rest, char separator) {
  const auto part = rest.substr(0, rest.find(separator));
  rest.remove_prefix(std::min(part.size() + 1, rest.size()));
  return part;
}

bool appendIp4(std::string_view text, Groups& groups) {
  const auto ip4 = parseIp4(text);
  if (!ip4) return false;
  for (const std::size_t i : {0U, 2U})
    groups.push_back(static_cast<std::uint16_t>((*ip4)[i] << 8 | (*ip4)[i + 1]));
  return true;
}

// Groups between colons; the last may be an IPv4 address. None at all is fine.
std::optional<Groups> parseGroups(std::string_view text) {
  Groups groups;
  if (text.ends_with(':')) return std::nullopt;
  while (!text.empty()) {
    const auto part = takePart(text, ':');
    if (text.empty() && part.find('.') != std::string_view::npos) {
      if (!appendIp4(part, groups)) return std::nullopt;
    } else if (const auto group = number(part, 16, 4)) {
      groups.push_back(*group);
    } else {
      return std::nullopt;
    }
  }
  return groups;
}

}  // namespace

std::optional<Ip4Address> parseIp4(std::string_view text) {
  Ip4Address address{};
  if (std::ranges::count(text, '.') != 3) return std::nullopt;
  for (auto& byte : address) {
    const auto part = takePart(text, '.');
    const auto value = number(part, 10, 3);
    if (!value || *value > 255 || (part.size() > 1 && part.front() == '0')) return std::nullopt;
    byte = static_cast<std::uint8_t>(*value);
  }
  return address;
}

std::optional<Ip6Address> parseIp6(std::string_view text) {
  text = text.substr(0, text.find('%'));
  const auto gap = text.find("::");
  const bool hasGap = gap != std::string_view::npos;
  const auto head = parseGroups(text.substr(0, gap));
  const auto tail = parseGroups(hasGap ? text.substr(gap + 2) : "");
  if (!head || !tail) return std::nullopt;
  const auto count = head->size() + tail->size();
  if (hasGap ? count > 7 : count != 8) return std::nullopt;
  Ip6Address address{};
  std::ranges::copy(*head, address.begin());
  std::ranges::copy_backward(*tail, address.end());
  return address;
}

}  // namespace nimbletype
