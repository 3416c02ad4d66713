#include "platform/scripted/network/scripted_http_client.h"

#include <utility>

namespace nimbletype {
namespace {

bool isWebAddress(std::string_view url) {
  for (const std::string_view scheme : {"http://", "https://"})
    if (url.starts_with(scheme)) return url.size() > scheme.size();
  return false;
}

std::unexpected<HttpFailure> failure(HttpFailure::Case reason) {
  return std::unexpected(HttpFailure{reason, "as the script says"});
}

}  // namespace

void ScriptedHttpClient::willReply(int status, std::string body, Milliseconds delay) {
  answers.push_back({HttpReply{status, {{"Content-Type", "application/json"}}, std::move(body)}, delay});
}

void ScriptedHttpClient::willFail(HttpFailure::Case reason, Milliseconds delay) {
  answers.push_back({failure(reason), delay});
}

ScriptedHttpClient::Answer ScriptedHttpClient::nextAnswer(const HttpRequest& request) {
  using enum HttpFailure::Case;
  if (!isWebAddress(request.url)) return {failure(badAddress)};
  Answer late{failure(timedOut), request.timeout};
  if (answers.empty()) return late;
  Answer answer = std::move(answers.front());
  answers.pop_front();
  if (answer.delay > request.timeout) return late;
  if (answer.result && answer.result->body.size() > longestBody) answer.result = failure(tooLarge);
  return answer;
}

Task ScriptedHttpClient::send(const HttpRequest& request, Handler done) {
  requests.push_back(request);
  const Answer answer = nextAnswer(request);
  const auto timer = std::make_shared<Task>();
  waiting_->push_back(timer);
  const auto leave = [waiting = std::weak_ptr(waiting_), key = std::weak_ptr(timer)] {
    const auto all = waiting.lock();
    return all && std::erase(*all, key.lock()) > 0;
  };
  *timer = loop_.after(answer.delay, [leave, done = std::move(done), result = answer.result] {
    if (leave()) done(result);
  });
  return Task([leave, cancelled = cancelled_] {
    if (leave()) ++*cancelled;
  });
}

}  // namespace nimbletype
