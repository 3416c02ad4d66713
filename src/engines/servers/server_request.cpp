#include "engines/servers/server_request.h"

#include <algorithm>
#include <utility>

#include "platform/network/web_address.h"
#include "text/text.h"

namespace nimbletype::server {
namespace {

constexpr auto npos = std::string_view::npos;
constexpr std::string_view bearer = "Bearer ";

ProviderError error(std::string message) {
  return {std::move(message)};
}

std::string_view withoutBlanks(std::string_view address) {
  const auto start = std::min(address.find_first_not_of(" \t"), address.size());
  return address.substr(start, address.find_last_not_of(" \t") + 1 - start);
}

// An address in brackets has colons; a name may be in any script but holds no sign that could hide another
// name.
bool isHost(std::string_view host) {
  return !host.empty() && (host.find(':') != npos || host.find_first_of("%[]!$&'()*+,;=") == npos);
}

bool isWeb(const WebAddress& address) {
  const auto scheme = text::lowercased(address.scheme);
  return (scheme == "http" || scheme == "https") && isHost(address.host);
}

// Line breaks and their like would end the header, and begin another one.
bool isControl(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte < ' ' || byte == 0x7F;
}

std::expected<HttpRequest, ProviderError> request(const Endpoint& endpoint, std::string_view path,
                                                  HttpRequest request) {
  auto url = join(endpoint.address, path);
  if (!url) return std::unexpected(std::move(url.error()));
  request.url = std::move(*url);
  const auto key = text::trimmed(endpoint.key);
  if (std::ranges::any_of(key, isControl))
    return std::unexpected(error("The API key holds a character that can't be sent"));
  if (!key.empty()) request.headers.push_back({"Authorization", std::string(bearer) + std::string(key)});
  return request;
}

}  // namespace

std::expected<std::string, ProviderError> join(std::string_view address, std::string_view path) {
  address = withoutBlanks(address);
  const auto parts = parseWebAddress(address);
  if (!parts || !isWeb(*parts) || !text::isValidUtf8(address))
    return std::unexpected(error("That address isn't valid"));
  const auto folder = parts->path.substr(0, parts->path.find_last_not_of('/') + 1);
  std::string url(address.substr(0, static_cast<std::size_t>(parts->path.data() - address.data())));
  url.append(folder).append("/").append(path);
  if (!parts->query.empty()) url.append("?").append(parts->query);
  return url;
}

std::expected<HttpRequest, ProviderError> getRequest(const Endpoint& endpoint, std::string_view path) {
  return request(endpoint, path, {"GET", {}, {}, {}, Milliseconds(3'000)});
}

std::expected<HttpRequest, ProviderError> postRequest(const Endpoint& endpoint, std::string_view path,
                                                      std::string body) {
  return request(endpoint, path,
                 {"POST", {}, {{"Content-Type", "application/json"}}, std::move(body), Milliseconds(20'000)});
}

std::string sentKey(const HttpRequest& request) {
  auto value = headerValue(request.headers, "Authorization");
  value.remove_prefix(std::min(bearer.size(), value.size()));
  return std::string(value);
}

std::string shownAddress(std::string_view address) {
  const auto slashes = address.find("//");
  const auto start = slashes == npos ? 0 : slashes + 2;
  const auto authority = address.substr(start, address.find_first_of("/?#", start) - start);
  const auto at = authority.rfind('@');
  auto shown = std::string(address);
  if (at != npos) shown.erase(start, at + 1);
  return text::repaired(shown);
}

}  // namespace nimbletype::server
