#pragma once
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <optional>

#include "platform/network/http_client.h"
#include "tests/platform/system/task_lifetimes.h"

// What every `HttpClient` must do. Instantiate with a default-constructible harness that has
//   HttpClient& client();
//   void dropClient();          // destroys it
//   std::string address();      // http, of a server that answers as told
//   void willReply(const HttpReply& reply, Milliseconds delay = {});  // the next request; its Content-Type
//   counts int received();             // requests so far HttpRequest lastRequest();  // as it arrived:
//   method, body and at least the headers that were asked for int abandoned();            // replies whose
//   connection the client has closed before they came void waitFor(std::string what, std::function<bool()>
//   condition);  // lets loop and server run
namespace nimbletype {

template <typename Harness>
struct HttpClientConformance : testing::Test, Harness {
  using Result = std::expected<HttpReply, HttpFailure>;

  Task send(
      const HttpRequest& request, std::function<void()> done = [] {}) {
    return this->client().send(request, [this, done](Result result) {
      results.push_back(std::move(result));
      done();
    });
  }
  Result resultOf(const HttpRequest& request) {
    results.clear();
    const Task task = send(request);
    EXPECT_TRUE(results.empty()) << "told before the call was over";
    this->waitFor("an answer from " + request.url, [&] { return !results.empty(); });
    return results.front();
  }
  // None when there was a reply.
  std::optional<HttpFailure::Case> failureOf(const HttpRequest& request) {
    const Result result = resultOf(request);
    return result ? std::nullopt : std::optional(result.error().reason);
  }
  HttpRequest request() { return {.url = this->address(), .headers = {}, .body = ""}; }
  void waitForRequests(int count) {
    this->waitFor("a request", [&] { return this->received() == count; });
  }
  void waitForAbandoned(int count) {
    this->waitFor("the connection to be closed", [&] { return this->abandoned() == count; });
  }

  std::vector<Result> results;
};
TYPED_TEST_SUITE_P(HttpClientConformance);

TYPED_TEST_P(HttpClientConformance, EveryStatusAndTypeIsAReply) {
  struct Case {
    int status;
    std::string type, body;
  };
  const Case cases[] = {{200, "application/json", R"({"response":"na\u00efve"})"},
                        {200, "text/html", "<html>not what was asked for</html>"},
                        {200, "application/octet-stream", std::string("\0\xFF\r\n\r\n", 6)},
                        {200, "application/json", ""},
                        {200, "text/plain", std::string(300'000, 'x')},
                        {302, "text/html", "moved"},
                        {400, "application/json", R"({"error":"no such model"})"},
                        {401, "application/json", "who are you?"},
                        {404, "text/html", "<html>nothing here</html>"},
                        {503, "text/html", "<html>later</html>"}};
  for (const auto& [status, type, body] : cases) {
    this->willReply({status, {{"Content-Type", type}}, body});
    const auto result = this->resultOf(this->request());
    ASSERT_TRUE(result) << status << ": " << result.error().detail;
    EXPECT_EQ(result->status, status);
    EXPECT_EQ(result->body, body) << status;
    EXPECT_EQ(headerValue(result->headers, "content-type"), type);
  }
}

TYPED_TEST_P(HttpClientConformance, SendsWhatItWasGiven) {
  auto request = this->request();
  request.method = "POST";
  request.headers = {{"Content-Type", "application/json"}, {"Authorization", "Bearer k\u00e9y"}};
  request.body = std::string("{\"prompt\":\"\u00e9\"}\0\r\n\r\n", 20);
  this->willReply({200, {}, ""});
  EXPECT_TRUE(this->resultOf(request));
  const HttpRequest arrived = this->lastRequest();
  EXPECT_EQ(arrived.method, "POST");
  EXPECT_EQ(arrived.body, request.body);
  for (const auto& [name, value] : request.headers) EXPECT_EQ(headerValue(arrived.headers, name), value);
}

TYPED_TEST_P(HttpClientConformance, RedirectsAreNotFollowed) {
  this->willReply({307, {{"Location", this->address() + "elsewhere"}}, ""});
  const auto result = this->resultOf(this->request());
  EXPECT_EQ(result.value().status, 307);
  EXPECT_EQ(this->received(), 1);
}

TYPED_TEST_P(HttpClientConformance, GivesUpOnWhatNoReplyCanBe) {
  auto request = this->request();
  for (const char* url :
       {"", "localhost:11434/api", "ftp://127.0.0.1/", "file:///etc/hostname", "http://", "/v1"}) {
    request.url = url;
    EXPECT_EQ(this->failureOf(request), HttpFailure::Case::badAddress) << url;
  }
  request = this->request();
  this->willReply({200, {}, std::string(HttpClient::longestBody, 'x')});
  EXPECT_EQ(this->resultOf(request).value().body.size(), HttpClient::longestBody);
  this->willReply({200, {}, std::string(HttpClient::longestBody + 1, 'x')});
  EXPECT_EQ(this->failureOf(request), HttpFailure::Case::tooLarge);
  request.timeout = Milliseconds(50);
  this->willReply({200, {}, "late"}, Milliseconds(60'000));
  EXPECT_EQ(this->failureOf(request), HttpFailure::Case::timedOut);
}

TYPED_TEST_P(HttpClientConformance, ADestroyedTaskClosesItsConnectionAndTellsNothing) {
  this->willReply({200, {}, "first"});
  EXPECT_TRUE(this->resultOf(this->request()));
  this->results.clear();
  this->willReply({200, {}, "never wanted"}, Milliseconds(60'000));
  {
    const Task task = this->send(this->request());
    this->waitForRequests(2);
  }
  this->waitForAbandoned(1);
  EXPECT_TRUE(this->results.empty());
  expectTaskLifetimes(
      [&](auto done) {
        this->willReply({200, {}, ""});
        return this->send(this->request(), done);
      },
      [&](auto... wait) { this->waitFor(wait...); });
}

TYPED_TEST_P(HttpClientConformance, TheClientMayGoFirst) {
  this->willReply({200, {}, "reply"});
  const Task task = this->send(this->request(), [this] { this->dropClient(); });
  this->waitFor("the reply", [&] { return !this->results.empty(); });
}

TYPED_TEST_P(HttpClientConformance, TheClientMayGoBeforeTheReply) {
  this->willReply({200, {}, "late"}, Milliseconds(60'000));
  const Task task = this->send(this->request());
  this->waitForRequests(1);
  this->dropClient();
  this->waitForAbandoned(1);
  EXPECT_TRUE(this->results.empty());
}

REGISTER_TYPED_TEST_SUITE_P(HttpClientConformance, EveryStatusAndTypeIsAReply, SendsWhatItWasGiven,
                            RedirectsAreNotFollowed, GivesUpOnWhatNoReplyCanBe,
                            ADestroyedTaskClosesItsConnectionAndTellsNothing, TheClientMayGoFirst,
                            TheClientMayGoBeforeTheReply);

}  // namespace nimbletype
