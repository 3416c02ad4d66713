#include "engines/servers/openai_compatible_provider.h"

#include "tests/engines/servers/provider_fixture.h"

namespace nimbletype {
namespace {

const std::string account = "server-api-key";

class OpenAICompatibleProviderTest : public ProviderFixture {
 protected:
  OpenAICompatibleProvider provider{http, loop, prefs, secrets};
};

TEST_F(OpenAICompatibleProviderTest, CompletesThePlainPrompt) {
  http.willReply(200, R"({"id":"x","choices":[{"text":" I hope","index":0},{"text":"no"}]})");
  EXPECT_EQ(complete(provider, request())->text, " I hope");
  ASSERT_EQ(http.requests.size(), 1U);
  const auto& sent = http.requests[0];
  EXPECT_EQ(sent.method, "POST");
  EXPECT_EQ(sent.url, "http://localhost:1234/v1/completions");
  EXPECT_EQ(sent.headers, (std::vector<HttpHeader>{{"Content-Type", "application/json"}}));
  EXPECT_EQ(sent.timeout, Milliseconds(20'000));
  EXPECT_EQ(sent.body, R"({"model":"base:1b","prompt":"[Now] Friday\n\nDear Zoë, \"","max_tokens":24,)"
                       R"("temperature":0.3,"stop":["\n\n","[Context"],"stream":false})");
}

TEST_F(OpenAICompatibleProviderTest, APromptThatIsNotQuiteTextIsSentRepaired) {
  auto odd = request();
  odd.rawPrompt = "a\xFF\x80z";
  odd.temperature = 1;
  odd.stop.clear();
  http.willReply(200, R"({"choices":[]})");
  EXPECT_EQ(complete(provider, odd)->text, "");
  EXPECT_EQ(
      http.requests[0].body,
      R"({"model":"base:1b","prompt":"a��z","max_tokens":24,"temperature":1.0,"stop":[],"stream":false})");
}

TEST_F(OpenAICompatibleProviderTest, TheKeyIsReadForEachRequestAndSentWhenThereIsOne) {
  const std::pair<std::optional<std::string>, std::string> cases[] = {
      {std::nullopt, ""}, {"", ""}, {" \r\n", ""}, {"sk-1", "Bearer sk-1"}, {" sk-2\r\n", "Bearer sk-2"},
  };
  for (const auto& [key, header] : cases) {
    secrets.secrets.clear();
    if (key) secrets.secrets[account] = *key;
    http.willReply(200, R"({"data":[]})");
    EXPECT_TRUE(models(provider));
    const auto& headers = http.requests.back().headers;
    EXPECT_EQ(headerValue(headers, "Authorization"), header);
    EXPECT_EQ(headers.size(), header.empty() ? 0U : 1U);
  }
  EXPECT_EQ(secrets.reads, 5);
}

TEST_F(OpenAICompatibleProviderTest, AKeyThatWouldBecomeMoreThanAHeaderIsNotSent) {
  secrets.secrets[account] = "sk-1\r\nHost: evil";
  const auto message = complete(provider, request()).error().message;
  EXPECT_EQ(message, "The API key holds a character that can't be sent");
  EXPECT_TRUE(http.requests.empty());
}

TEST_F(OpenAICompatibleProviderTest, ALockedKeyIsNotNoKey) {
  secrets.secrets[account] = "sk-1";
  secrets.locked = true;
  const std::string unlock = "Unlock the keychain that holds your server's API key";
  EXPECT_EQ(complete(provider, request()).error().message, unlock);
  EXPECT_EQ(models(provider).error().message, unlock);
  EXPECT_EQ(status(provider), ProviderStatus::problem(unlock));
  EXPECT_TRUE(http.requests.empty());
  secrets.available = false;
  http.willReply(200, R"({"data":[]})");
  EXPECT_TRUE(models(provider)) << "without a store there is no key";
}

TEST_F(OpenAICompatibleProviderTest, WithoutAModelNeitherServerNorStoreIsAsked) {
  auto nameless = request();
  nameless.model.clear();
  EXPECT_EQ(complete(provider, nameless).error().message, "Pick a model for your local server");
  EXPECT_TRUE(http.requests.empty());
  EXPECT_EQ(secrets.reads, 0);
}

TEST_F(OpenAICompatibleProviderTest, KeepsTheServersOrderOfModels) {
  http.willReply(200, R"({"object":"list","data":[{"id":"llama3"},{"id":"Mistral"}]})");
  EXPECT_EQ(models(provider), (std::vector<std::string>{"llama3", "Mistral"}));
  EXPECT_EQ(http.requests[0].method + " " + http.requests[0].url, "GET http://localhost:1234/v1/models");
  EXPECT_EQ(http.requests[0].timeout, Milliseconds(3'000));
}

TEST_F(OpenAICompatibleProviderTest, StatusCountsModels) {
  const auto none = ProviderStatus::problem("No server answered at http://localhost:1234/v1");
  const std::pair<std::string, ProviderStatus> cases[] = {
      {R"({"data":[{"id":"a"}]})", ProviderStatus::good("1 model available")},
      {R"({"data":[{"id":"a"},{"id":"b"},{"id":"c"}]})", ProviderStatus::good("3 models available")},
      {R"({"data":[]})", none},
      {"<html>", none},
  };
  for (const auto& [body, expected] : cases) {
    http.willReply(200, body);
    EXPECT_EQ(status(provider), expected) << body;
  }
  EXPECT_EQ(status(provider), none) << "nobody answers";
  prefs.serverURL.set("my server");
  EXPECT_EQ(status(provider), ProviderStatus::problem("No server answered at my server"));
}

TEST_F(OpenAICompatibleProviderTest, WhatGoesWrongIsToldInASentenceWithoutTheKey) {
  secrets.secrets[account] = "sk-secret";
  prefs.serverURL.set("http://user:pw@box:8080/v1?token=t");
  using enum HttpFailure::Case;
  const std::pair<HttpFailure::Case, std::string> failures[] = {
      {badAddress, "That address isn't valid"},
      {notConnected, "No server answers at http://box:8080"},
      {notTrusted, "The server at http://box:8080 has a certificate that isn't trusted"},
      {timedOut, "The server at http://box:8080 took too long to answer"},
      {dropped, "The server at http://box:8080 closed the connection before its answer was complete"},
      {tooLarge, "The server at http://box:8080 answered with far too much"},
  };
  for (const auto& [reason, message] : failures) {
    http.willFail(reason);
    EXPECT_EQ(complete(provider, request()).error().message, message);
  }
  EXPECT_EQ(http.requests[0].url, "http://user:pw@box:8080/v1/completions?token=t");
  http.willReply(401, "no such key: sk-secret (sk-secret)");
  EXPECT_EQ(complete(provider, request()).error().message, "The server answered 401. no such key: *** (***)");
  http.willReply(302, "");
  EXPECT_EQ(models(provider).error().message, "The server answered 302. ");
}

TEST_F(OpenAICompatibleProviderTest, AnswersThatAreNoneAreToldApartFromEmptyOnes) {
  const auto deep = std::string(200'000, '[');
  const std::string broken[] = {"",
                                "null",
                                "[]",
                                "{}",
                                "<html>",
                                R"({"choices":null})",
                                R"({"choices":[{}]})",
                                R"({"choices":[{"text":null}]})",
                                R"({"choices":[1]})",
                                R"({"choices":[{"text":"cut)",
                                "{\"choices\":[\xFF]}",
                                R"({"choices":[{"text":"\ud800"}]})",
                                R"({"choices":1e999})",
                                deep,
                                R"({"choices":)" + deep};
  for (const auto& body : broken) {
    http.willReply(200, body);
    EXPECT_EQ(complete(provider, request()).error().message, "The server's answer wasn't a completion")
        << body.substr(0, 40);
  }
  http.willReply(200, R"({"choices":[{"text":"[[[{{{ \" ["}]})");
  EXPECT_EQ(complete(provider, request())->text, "[[[{{{ \" [");
  http.willReply(200, R"({"models":[]})");
  EXPECT_EQ(models(provider).error().message, "The server's answer wasn't a list of models");
}

TEST_F(OpenAICompatibleProviderTest, CancellingWorksBeforeAndAfterTheKeyIsThere) {
  {
    const auto task = provider.complete(request(), {}, [](const auto&) { FAIL(); });
  }
  loop.advance(forLong);
  EXPECT_TRUE(http.requests.empty());
  {
    const auto task = provider.complete(request(), {}, [](const auto&) { FAIL(); });
    loop.advance(Milliseconds(10));
    EXPECT_EQ(http.waiting(), 1U);
  }
  EXPECT_EQ(http.cancelled(), 1);
  loop.advance(forLong);
}

}  // namespace
}  // namespace nimbletype
