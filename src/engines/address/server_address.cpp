#include "engines/address/server_address.h"

#include <algorithm>
#include <array>

#include "core/settings/local_address.h"
#include "engines/address/ip_address.h"
#include "engines/servers/server_request.h"
#include "platform/network/web_address.h"
#include "text/text.h"

namespace nimbletype {
namespace {

ServerPlace placeOf(const Ip4Address& ip) {
  if (ip[0] == 127 || ip == Ip4Address{0, 0, 0, 0}) return ServerPlace::mayBeThisMachine;
  const bool isPrivate =
      ip[0] == 10 || (ip[0] == 172 && (ip[1] & 0xF0) == 16) || (ip[0] == 192 && ip[1] == 168);
  const bool isLinkLocal = ip[0] == 169 && ip[1] == 254;
  return isPrivate || isLinkLocal ? ServerPlace::localNetwork : ServerPlace::elsewhere;
}

ServerPlace placeOf(const Ip6Address& ip) {
  const bool startsEmpty = std::all_of(ip.begin(), ip.begin() + 5, [](auto group) { return group == 0; });
  if (startsEmpty && ip[5] == 0 && ip[6] == 0 && ip[7] <= 1) return ServerPlace::mayBeThisMachine;
  if (startsEmpty && ip[5] == 0xFFFF) {
    const auto byte = [](int value) { return static_cast<std::uint8_t>(value & 0xFF); };
    return placeOf(Ip4Address{byte(ip[6] >> 8), byte(ip[6]), byte(ip[7] >> 8), byte(ip[7])});
  }
  const bool isLinkLocal = (ip[0] & 0xFFC0) == 0xFE80;
  const bool isUniqueLocal = (ip[0] & 0xFE00) == 0xFC00;
  return isLinkLocal || isUniqueLocal ? ServerPlace::localNetwork : ServerPlace::elsewhere;
}

// Such a name may be a number that is read as an IPv4 address, or fold into a name with dots.
bool isPlainLabel(std::string_view name) {
  const auto isLetter = [](char c) { return c >= 'a' && c <= 'z'; };
  const auto isAllowed = [&](char c) {
    return isLetter(c) || (c >= '0' && c <= '9') || c == '-' || c == '_';
  };
  return std::ranges::all_of(name, isAllowed) && std::ranges::any_of(name, isLetter) &&
         !name.starts_with("0x");
}

ServerPlace placeOfName(std::string_view name) {
  if (name.ends_with('.')) name.remove_suffix(1);
  if (name == "localhost" || name.ends_with(".localhost")) return ServerPlace::mayBeThisMachine;
  // What home routers and Bonjour name; none of these exists on the Internet.
  constexpr std::array<std::string_view, 4> homeDomains{".local", ".lan", ".internal", ".home.arpa"};
  const bool isHome = std::ranges::any_of(homeDomains, [&](auto domain) { return name.ends_with(domain); });
  return isHome || isPlainLabel(name) ? ServerPlace::localNetwork : ServerPlace::elsewhere;
}

ServerPlace placeOfHost(std::string_view host) {
  if (const auto ip = parseIp4(host)) return placeOf(*ip);
  if (const auto ip = parseIp6(host)) return placeOf(*ip);
  return placeOfName(text::lowercased(host));
}

std::string_view hostOf(std::string_view address) {
  const auto parts = parseWebAddress(address);
  return parts ? parts->host : std::string_view();
}

}  // namespace

std::optional<ServerPlace> serverPlace(std::string_view address) {
  const auto url = server::join(address, "");
  if (!url) return std::nullopt;
  return isLocalAddress(*url) ? ServerPlace::staysOnThisMachine : placeOfHost(hostOf(*url));
}

std::string serverWarning(std::string_view address) {
  const auto place = serverPlace(address);
  if (!place || *place == ServerPlace::staysOnThisMachine) return {};
  const std::string host(hostOf(*server::join(address, "")));
  if (*place == ServerPlace::mayBeThisMachine)
    return host + " isn't known to be this Mac, so the text around your caret may be sent elsewhere.";
  if (*place == ServerPlace::localNetwork)
    return host + " is another device on your network, so the text around your caret will be sent there.";
  return host + " isn't this Mac, so the text around your caret will be sent there.";
}

}  // namespace nimbletype
