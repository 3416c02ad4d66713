#include "engines/servers/server_reply.h"

#include <utility>

#include "platform/network/web_address.h"
#include "text/text.h"

namespace nimbletype::server {
namespace {

// Far more than the characters shown can take; the rest of a long page is not worth looking at.
constexpr std::size_t bytesLookedAt = 16 << 10;
constexpr std::size_t charactersShown = 160;

// Servers may repeat the key they refuse.
std::string redacted(std::string_view text, std::string_view key) {
  if (key.empty()) return std::string(text);
  std::string out;
  for (auto at = text.find(key); at != std::string_view::npos; at = text.find(key)) {
    out.append(text.substr(0, at)).append("***");
    text.remove_prefix(at + key.size());
  }
  return out.append(text);
}

// Which server: neither who asks nor for what.
std::string origin(std::string_view url) {
  const auto address = parseWebAddress(url);
  if (!address) return "that address";
  return text::repaired(std::string(address->scheme) + "://" + std::string(address->hostPort));
}

}  // namespace

std::string statusMessage(int status, std::string_view body, std::string_view key) {
  const auto text = text::repaired(redacted(body.substr(0, bytesLookedAt), key));
  return "The server answered " + std::to_string(status) + ". " + text::clipped(text, charactersShown);
}

std::string failureMessage(const HttpFailure& failure, std::string_view url) {
  const std::string server = "The server at " + origin(url);
  switch (failure.reason) {
    case HttpFailure::Case::badAddress:
      return "That address isn't valid";
    case HttpFailure::Case::notConnected:
      return "No server answers at " + origin(url);
    case HttpFailure::Case::notTrusted:
      return server + " has a certificate that isn't trusted";
    case HttpFailure::Case::timedOut:
      return server + " took too long to answer";
    case HttpFailure::Case::dropped:
      return server + " closed the connection before its answer was complete";
    case HttpFailure::Case::tooLarge:
      return server + " answered with far too much";
  }
  return server + " didn't answer";
}

Body checkedBody(std::expected<HttpReply, HttpFailure> reply, std::string_view url, std::string_view key) {
  if (!reply) return std::unexpected(ProviderError{failureMessage(reply.error(), url)});
  if (reply->status < 200 || reply->status > 299)
    return std::unexpected(ProviderError{statusMessage(reply->status, reply->body, key)});
  return std::move(reply->body);
}

ProviderStatus modelsAvailable(std::size_t count) {
  return ProviderStatus::good(std::to_string(count) +
                              (count == 1 ? " model available" : " models available"));
}

}  // namespace nimbletype::server
