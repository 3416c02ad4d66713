#pragma once
#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "platform/network/http_client.h"

namespace nimbletype {

// Gives the answers it was told to give, one for each request in their order.
class ScriptedHttpClient final : public HttpClient {
 public:
  using Result = std::expected<HttpReply, HttpFailure>;
  struct Answer {
    Result result;
    Milliseconds delay{0};  // a longer one than the request's timeout means `timedOut` at that time
  };

  explicit ScriptedHttpClient(MainLoop& loop) : loop_(loop) {}

  [[nodiscard]] Task send(const HttpRequest& request, Handler done) override;

  void willReply(int status, std::string body, Milliseconds delay = {});
  void willFail(HttpFailure::Case reason, Milliseconds delay = {});

  // How many requests lost their task before the answer came.
  int cancelled() const { return *cancelled_; }
  // Those that are neither answered nor cancelled.
  std::size_t waiting() const { return waiting_->size(); }

  std::deque<Answer> answers;         // a request that finds none times out
  std::vector<HttpRequest> requests;  // in order

 private:
  using Waiting = std::deque<std::shared_ptr<Task>>;
  Answer nextAnswer(const HttpRequest& request);

  MainLoop& loop_;
  std::shared_ptr<Waiting> waiting_ = std::make_shared<Waiting>();  // tasks may outlive this object
  std::shared_ptr<int> cancelled_ = std::make_shared<int>(0);
};

}  // namespace nimbletype
