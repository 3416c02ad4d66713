#pragma once
#include <expected>
#include <string>
#include <string_view>

#include "engines/provider/completion_provider.h"
#include "platform/network/http_client.h"

namespace nimbletype::server {

using Body = std::expected<std::string, ProviderError>;

// The body of a reply that reports success. Else a sentence for the user, which never shows `key`.
Body checkedBody(std::expected<HttpReply, HttpFailure> reply, std::string_view url, std::string_view key);

// What a server that reports an error has to say.
std::string statusMessage(int status, std::string_view body, std::string_view key);
// Why the server at this address did not answer.
std::string failureMessage(const HttpFailure& failure, std::string_view url);

// The state of a server that lists this many models, at least one.
ProviderStatus modelsAvailable(std::size_t count);

// What `decode` makes of a body that came.
template <typename Decode>
auto decoded(const Body& body, Decode decode) -> decltype(decode(*body)) {
  if (!body) return std::unexpected(body.error());
  return decode(*body);
}

}  // namespace nimbletype::server
