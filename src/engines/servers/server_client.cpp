#include "engines/servers/server_client.h"

#include <utility>

namespace nimbletype {

Task ServerClient::get(const Endpoint& endpoint, std::string_view path, Handler done) {
  if (!endpoint) return fail(endpoint.error(), std::move(done));
  return send(server::getRequest(*endpoint, path), std::move(done));
}

Task ServerClient::post(const Endpoint& endpoint, std::string_view path, std::string body, Handler done) {
  if (!endpoint) return fail(endpoint.error(), std::move(done));
  return send(server::postRequest(*endpoint, path, std::move(body)), std::move(done));
}

Task ServerClient::fail(ProviderError error, Handler done) {
  return loop_.after(Milliseconds(0),
                     [error = std::move(error), done = std::move(done)] { done(std::unexpected(error)); });
}

Task ServerClient::send(std::expected<HttpRequest, ProviderError> request, Handler done) {
  if (!request) return fail(std::move(request.error()), std::move(done));
  return http_.send(*request, [url = request->url, key = server::sentKey(*request),
                               done = std::move(done)](std::expected<HttpReply, HttpFailure> reply) {
    done(server::checkedBody(std::move(reply), url, key));
  });
}

}  // namespace nimbletype
