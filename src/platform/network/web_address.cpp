#include "platform/network/web_address.h"

#include <algorithm>

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

// Cuts the text before the first of `ends` off `rest`, which keeps what ended it.
std::string_view takeUntil(std::string_view& rest, std::string_view ends) {
  const auto taken = rest.substr(0, rest.find_first_of(ends));
  rest.remove_prefix(taken.size());
  return taken;
}

bool isScheme(std::string_view text) {
  return !text.empty() && !isDigit(text.front()) && std::ranges::all_of(text, isSchemeCharacter);
}

// Up to and with the slashes before the host.
bool takeScheme(std::string_view& rest, WebAddress& address) {
  const auto slashes = rest.find("//");
  if (slashes == npos) return false;
  const auto before = rest.substr(0, slashes);
  rest.remove_prefix(slashes + 2);
  if (before.empty()) return true;
  address.scheme = before.substr(0, before.size() - 1);
  return before.back() == ':' && isScheme(address.scheme);
}

bool isPort(std::string_view text) {
  if (text.empty()) return true;
  if (text.front() != ':' || !std::ranges::all_of(text.substr(1), isDigit)) return false;
  int port = 0;
  for (const char digit : text.substr(1)) port = std::min(port * 10 + (digit - '0'), 0x10000);
  return port < 0x10000;
}

bool takeAuthority(std::string_view authority, WebAddress& address) {
  if (const auto at = authority.find('@'); at != npos) {
    address.userInfo = authority.substr(0, at);
    authority.remove_prefix(at + 1);
  }
  address.hostPort = authority;
  const bool bracketed = authority.starts_with('[');
  const auto end = bracketed ? authority.find(']') : std::min(authority.find(':'), authority.size());
  if (end == npos) return false;
  address.host = bracketed ? authority.substr(1, end - 1) : authority.substr(0, end);
  return isPort(authority.substr(end + (bracketed ? 1 : 0))) && address.host.find('@') == npos;
}

}  // namespace

std::optional<WebAddress> parseWebAddress(std::string_view text) {
  if (std::ranges::any_of(text, isForbidden)) return std::nullopt;
  WebAddress address;
  if (!takeScheme(text, address)) return std::nullopt;
  text = text.substr(0, text.find('#'));
  if (!takeAuthority(takeUntil(text, "/?"), address)) return std::nullopt;
  address.path = takeUntil(text, "?");
  if (!text.empty()) address.query = text.substr(1);
  return address;
}

}  // namespace nimbletype
