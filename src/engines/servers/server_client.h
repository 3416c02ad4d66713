#pragma once
#include <functional>
#include <string>
#include <string_view>

#include "engines/servers/server_reply.h"
#include "engines/servers/server_request.h"
#include "platform/system/main_loop.h"

namespace nimbletype {

// Sends requests to a server the user configured. Handlers run in a later turn; destroying the task closes
// the connection.
class ServerClient {
 public:
  using Handler = std::function<void(server::Body)>;
  // Where to; what is known to fail is told like any other failure.
  using Endpoint = std::expected<server::Endpoint, ProviderError>;

  ServerClient(HttpClient& http, MainLoop& loop) : http_(http), loop_(loop) {}

  [[nodiscard]] Task get(const Endpoint& endpoint, std::string_view path, Handler done);
  // `body` is JSON.
  [[nodiscard]] Task post(const Endpoint& endpoint, std::string_view path, std::string body, Handler done);
  // Answers without asking any server.
  [[nodiscard]] Task fail(ProviderError error, Handler done);

 private:
  Task send(std::expected<HttpRequest, ProviderError> request, Handler done);

  HttpClient& http_;
  MainLoop& loop_;
};

}  // namespace nimbletype
