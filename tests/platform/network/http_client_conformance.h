#pragma once
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <optional>

#include "platform/network/http_client.h"

// What every `HttpClient` must do. Instantiate with a default-constructible harness that has
//   HttpClient& client();
//   void dropClient();          // destroys it
//   std::string address();      // http, of a server that answers as told
//   void willReply(const HttpReply& reply, Milliseconds delay = {});  // the next request; its Content-Type
//   counts int received();             // requests so far HttpRequest lastRequest();  // as it arrived:
//   method, body and at least the headers that were asked for int abandoned();            // replies whose
//   connection the client has closed before they came bool runUntil(std::function<bool()> done);  // lets
//   loop and server run; false when it gave up
namespace nimbletype {

template <typename Harness>
class HttpClientConformance : public testing::Test {
 protected:
  using Result = std::expected<HttpReply, HttpFailure>;

  HttpClient::Handler keep() {
    return [this](Result result) { results_.push_back(std::move(result)); };
  }
  Result resultOf(const HttpRequest& request) {
    results_.clear();
    const Task task = harness_.client().send(request, keep());
    EXPECT_TRUE(results_.empty()) << "told before the call was over";
    EXPECT_TRUE(harness_.runUntil([&] { return !results_.empty(); })) << "nothing was ever told";
    return results_.empty() ? std::unexpected(HttpFailure{}) : results_.front();
  }
  HttpRequest request() { return {.url = harness_.address(), .headers = {}, .body = ""}; }
  void awaitRequests(int count) {
    EXPECT_TRUE(harness_.runUntil([&] { return harness_.received() == count; })) << "a request never arrived";
  }
  void awaitAbandoned(int count) {
    EXPECT_TRUE(harness_.runUntil([&] { return harness_.abandoned() == count; }))
        << "the connection stayed open";
  }

  Harness harness_;
  std::vector<Result> results_;
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
                        {500, "text/plain", "oh"},
                        {503, "text/html", "<html>later</html>"}};
  for (const auto& [status, type, body] : cases) {
    this->harness_.willReply({status, {{"Content-Type", type}}, body});
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
  this->harness_.willReply({200, {}, ""});
  EXPECT_TRUE(this->resultOf(request));
  const HttpRequest arrived = this->harness_.lastRequest();
  EXPECT_EQ(arrived.method, "POST");
  EXPECT_EQ(arrived.body, request.body);
  for (const auto& [name, value] : request.headers) EXPECT_EQ(headerValue(arrived.headers, name), value);
}

TYPED_TEST_P(HttpClientConformance, RedirectsAreNotFollowed) {
  this->harness_.willReply({307, {{"Location", this->harness_.address() + "elsewhere"}}, ""});
  const auto result = this->resultOf(this->request());
  ASSERT_TRUE(result);
  EXPECT_EQ(result->status, 307);
  EXPECT_EQ(this->harness_.received(), 1);
}

TYPED_TEST_P(HttpClientConformance, OtherAddressesThanHttpAreBad) {
  for (const char* url :
       {"", "localhost:11434/api", "ftp://127.0.0.1/", "file:///etc/hostname", "http://", "/v1"}) {
    auto request = this->request();
    request.url = url;
    const auto result = this->resultOf(request);
    ASSERT_FALSE(result) << url;
    EXPECT_EQ(result.error().reason, HttpFailure::Case::badAddress) << url;
  }
}

TYPED_TEST_P(HttpClientConformance, GivesUpWhenTheTimeIsOver) {
  auto request = this->request();
  request.timeout = Milliseconds(50);
  this->harness_.willReply({200, {}, "late"}, Milliseconds(60'000));
  const auto result = this->resultOf(request);
  ASSERT_FALSE(result);
  EXPECT_EQ(result.error().reason, HttpFailure::Case::timedOut);
}

TYPED_TEST_P(HttpClientConformance, OverlongBodiesAreRefused) {
  this->harness_.willReply({200, {}, std::string(HttpClient::longestBody, 'x')});
  const auto longest = this->resultOf(this->request());
  ASSERT_TRUE(longest);
  EXPECT_EQ(longest->body.size(), HttpClient::longestBody);
  this->harness_.willReply({200, {}, std::string(HttpClient::longestBody + 1, 'x')});
  const auto longer = this->resultOf(this->request());
  ASSERT_FALSE(longer);
  EXPECT_EQ(longer.error().reason, HttpFailure::Case::tooLarge);
}

TYPED_TEST_P(HttpClientConformance, ADestroyedTaskClosesItsConnectionAndTellsNothing) {
  this->harness_.willReply({200, {}, "first"});
  EXPECT_TRUE(this->resultOf(this->request()));
  this->results_.clear();
  this->harness_.willReply({200, {}, "never wanted"}, Milliseconds(60'000));
  {
    const Task task = this->harness_.client().send(this->request(), this->keep());
    this->awaitRequests(2);
  }
  this->awaitAbandoned(1);
  this->harness_.willReply({200, {}, "last"});
  const auto last = this->resultOf(this->request());
  ASSERT_TRUE(last);
  EXPECT_EQ(last->body, "last");
  { const Task atOnce = this->harness_.client().send(this->request(), this->keep()); }
  this->harness_.runUntil([turns = 0]() mutable { return ++turns > 20; });
  EXPECT_EQ(this->results_.size(), 1U);
}

TYPED_TEST_P(HttpClientConformance, AHandlerMayReplaceItsOwnTask) {
  this->harness_.willReply({200, {}, "first"});
  Task task;
  std::optional<HttpReply> second;
  task = this->harness_.client().send(this->request(), [&](const auto&) {
    this->harness_.willReply({200, {}, "second"});
    task = this->harness_.client().send(this->request(), [&](const auto& result) {
      task = {};
      if (result) second = *result;
    });
  });
  EXPECT_TRUE(this->harness_.runUntil([&] { return second.has_value(); })) << "the second reply never came";
  EXPECT_EQ(second ? second->body : "", "second");
}

TYPED_TEST_P(HttpClientConformance, TheClientMayGoFirst) {
  this->harness_.willReply({200, {}, "late"}, Milliseconds(60'000));
  const Task task = this->harness_.client().send(this->request(), this->keep());
  this->awaitRequests(1);
  this->harness_.dropClient();
  this->awaitAbandoned(1);
  EXPECT_TRUE(this->results_.empty());
}

TYPED_TEST_P(HttpClientConformance, AHandlerMayDestroyTheClient) {
  this->harness_.willReply({200, {}, "reply"});
  bool dropped = false;
  const Task task = this->harness_.client().send(this->request(), [&](const auto&) {
    this->harness_.dropClient();
    dropped = true;
  });
  EXPECT_TRUE(this->harness_.runUntil([&] { return dropped; })) << "the reply never came";
}

REGISTER_TYPED_TEST_SUITE_P(HttpClientConformance, EveryStatusAndTypeIsAReply, SendsWhatItWasGiven,
                            RedirectsAreNotFollowed, OtherAddressesThanHttpAreBad, GivesUpWhenTheTimeIsOver,
                            OverlongBodiesAreRefused, ADestroyedTaskClosesItsConnectionAndTellsNothing,
                            AHandlerMayReplaceItsOwnTask, TheClientMayGoFirst, AHandlerMayDestroyTheClient);

}  // namespace nimbletype
