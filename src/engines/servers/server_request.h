#pragma once
#include <expected>
#include <string>
#include <string_view>

#include "engines/provider/completion_provider.h"
#include "platform/network/http_client.h"

// What the engines that talk to a server have in common.
namespace nimbletype::server {

// A server as the user configured it.
struct Endpoint {
  std::string address;
  std::string key;  // empty: none is sent
};

// The address with `path` behind its own path. The query stays, the fragment goes.
std::expected<std::string, ProviderError> join(std::string_view address, std::string_view path);

std::expected<HttpRequest, ProviderError> getRequest(const Endpoint& endpoint, std::string_view path);
// `body` is JSON.
std::expected<HttpRequest, ProviderError> postRequest(const Endpoint& endpoint, std::string_view path,
                                                      std::string body);

// The key that a request carries; empty when there is none.
std::string sentKey(const HttpRequest& request);

// The address for messages: without name and password.
std::string shownAddress(std::string_view address);

}  // namespace nimbletype::server
