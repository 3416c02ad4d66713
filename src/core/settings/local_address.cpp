#include "core/settings/local_address.h"

#include <algorithm>
#include <optional>
#include <string>

#include "text/text.h"

namespace nimbletype {
namespace {

constexpr auto npos = std::string_view::npos;

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}
bool isSchemeCharacter(char c) {
  return isDigit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '+' || c == '-' || c == '.';
}
// What must be escaped anywhere in an address.
bool isForbidden(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte <= ' ' || byte == 0x7F || std::string_view("\"<>\\^`{|}").find(c) != npos;
}

// What stands between "//" and the path.
std::optional<std::string_view> authority(std::string_view address) {
  if (std::ranges::any_of(address, isForbidden)) return std::nullopt;
  const auto slashes = address.find("//");
  if (slashes == npos) return std::nullopt;
  const auto scheme = address.substr(0, slashes);
  const bool hasScheme = scheme.size() >= 2 && scheme.back() == ':' && !isDigit(scheme.front()) &&
                         std::ranges::all_of(scheme.substr(0, scheme.size() - 1), isSchemeCharacter);
  if (!scheme.empty() && !hasScheme) return std::nullopt;
  const auto rest = address.substr(slashes + 2);
  return rest.substr(0, rest.find_first_of("/?#"));
}

// Without user name and port; an address in brackets loses them.
std::optional<std::string_view> host(std::string_view authority) {
  if (const auto at = authority.find('@'); at != npos) authority.remove_prefix(at + 1);
  const bool bracketed = authority.starts_with('[');
  const auto end = bracketed ? authority.find(']') : std::min(authority.find(':'), authority.size());
  if (end == npos) return std::nullopt;
  const auto port = authority.substr(end + (bracketed ? 1 : 0));
  if (!port.empty() && (port.front() != ':' || !std::ranges::all_of(port.substr(1), isDigit)))
    return std::nullopt;
  const auto name = bracketed ? authority.substr(1, end - 1) : authority.substr(0, end);
  if (name.find('@') != npos) return std::nullopt;
  return name;
}

}  // namespace

bool isLocalAddress(std::string_view address) {
  const auto found = authority(address).and_then(host);
  if (!found) return false;
  const auto name = text::lowercased(*found);
  return name == "localhost" || name.ends_with(".localhost") || name == "127.0.0.1" || name == "::1";
}

}  // namespace nimbletype
