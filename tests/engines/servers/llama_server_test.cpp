// The OpenAI-compatible engine with llama.cpp's own server.
#include "tools/stage/servers/llama_server.h"
#include "engines/servers/openai_compatible_provider.h"
#include "tests/engines/servers/socket_fixture.h"

namespace nimbletype {
namespace {

class LlamaServerTest : public SocketFixture {
 protected:
  static void SetUpTestSuite() {
    server = std::make_unique<LlamaServer>(
        LLAMA_SERVER, "models/starter/starter-q8_0.gguf",
        std::vector<std::string>{"--alias", "starter", "--api-key", key, "--context-shift", "--ignore-eos"});
  }
  static void TearDownTestSuite() { server.reset(); }

  LlamaServerTest() {
    prefs.serverURL.set(server->url("/v1"));
    secrets.secrets[OpenAICompatibleProvider::keyAccount] = key;
  }

  static constexpr auto key = "sk-starter";
  static inline std::unique_ptr<LlamaServer> server;
  OpenAICompatibleProvider provider{http, loop, prefs, secrets};
};

TEST_F(LlamaServerTest, Writes) {
  EXPECT_EQ(complete(provider, request("I hope this email", 5))->text, " finds you well. I");
  auto stopped = request("I hope this email", 40);
  stopped.stop = {"well"};
  EXPECT_EQ(complete(provider, stopped)->text, " finds you ");
}

TEST_F(LlamaServerTest, ListsItsModel) {
  EXPECT_EQ(models(provider), std::vector<std::string>{"starter"});
  EXPECT_EQ(status(provider), ProviderStatus::good("1 model available"));
}

TEST_F(LlamaServerTest, OffersAlternatives) {
  const auto texts = alternatives(provider, request("Could we meet on", 8), 4);
  ASSERT_TRUE(texts) << texts.error().message;
  EXPECT_GE(texts->size(), 2U);
}

TEST_F(LlamaServerTest, ItsRefusalsAreShown) {
  secrets.secrets[OpenAICompatibleProvider::keyAccount] = "sk-wrong";
  EXPECT_EQ(
      complete(provider, request("I", 5)).error().message,
      R"(The server answered 401. {"error":{"message":"Invalid API Key","type":"authentication_error","code":401}})");
  secrets.secrets[OpenAICompatibleProvider::keyAccount] = key;
  prefs.serverURL.set(server->url("/wrong/v1"));
  EXPECT_EQ(
      complete(provider, request("I", 5)).error().message,
      R"(The server answered 404. {"error":{"message":"File Not Found","type":"not_found_error","code":404}})");
  EXPECT_EQ(status(provider), ProviderStatus::problem("No server answered at " + server->url("/wrong/v1")));
}

TEST_F(LlamaServerTest, ACancelledGenerationEndsThereToo) {
  {
    const auto task =
        provider.complete(request("Once upon a time", 100'000'000), {}, [](const auto&) { FAIL(); });
    runUntil("a long generation",
             [] { return server->log().find("slot context shift") != std::string::npos; });
  }
  runUntil("its end", [] { return server->log().find("cancel task") != std::string::npos; });
  EXPECT_TRUE(complete(provider, request("I hope", 5)));
}

}  // namespace
}  // namespace nimbletype
