// Servers as they are on bad days.
#include "engines/servers/ollama_provider.h"
#include "engines/servers/openai_compatible_provider.h"
#include "tests/engines/servers/socket_fixture.h"
#include "tools/stage/servers/loopback_server.h"

namespace nimbletype {
namespace {

const std::string written =
    R"({"model":"starter","response":" finds you well.","done":true,"context":[3,5]})";
const std::string noModels = R"({"models":[]})";
const std::string twoModels = R"({"models":[{"name":"llama3","size":4},{"name":"Mistral","size":5}]})";

class ServerWeather : public SocketFixture {
 protected:
  ServerWeather() {
    prefs.ollamaURL.set(server.url());
    prefs.serverURL.set(server.url("/v1"));
  }
  std::string completeWith(LoopbackServer::Answer bytes) {
    server.willAnswer(std::move(bytes));
    const auto result = complete(ollama, request("I hope this email", 5));
    return result ? "writes" + result->text : result.error().message;
  }

  LoopbackServer server;
  OllamaProvider ollama{http, loop, prefs};
  OpenAICompatibleProvider openAI{http, loop, prefs, secrets};
};

TEST_F(ServerWeather, FairOverOneConnection) {
  server.willAnswer({httpAnswer(200, twoModels)});
  server.willAnswer({httpAnswer(200, noModels)});
  server.willAnswer({httpAnswer(200, R"({"version":"0.5.0"})")});
  server.willAnswer({httpAnswer(200, written)});
  EXPECT_EQ(models(ollama), (std::vector<std::string>{"Mistral", "llama3"}));
  EXPECT_EQ(status(ollama), ProviderStatus::problem("Ollama is running but has no models"));
  EXPECT_EQ(complete(ollama, request("I hope this email", 5))->text, " finds you well.");
  const auto received = server.received();
  ASSERT_EQ(received.size(), 4U);
  const std::string_view lines[] = {"GET /api/tags HTTP/1.1\r\n", "GET /api/tags HTTP/1.1\r\n",
                                    "GET /api/version HTTP/1.1\r\n", "POST /api/generate HTTP/1.1\r\n"};
  for (std::size_t i = 0; i < 4; ++i) EXPECT_TRUE(received[i].head.starts_with(lines[i])) << received[i].head;
  EXPECT_NE(received[3].head.find("\r\nContent-Type: application/json\r\n"), std::string::npos);
  EXPECT_EQ(received[3].head.find("Authorization"), std::string::npos);
  EXPECT_TRUE(received[3].body.starts_with(R"({"model":"starter","prompt":"I hope this email","raw":true)"));
  EXPECT_EQ(server.connections(), 1);
}

TEST_F(ServerWeather, TheKeyGoesToTheServerAndIntoNoMessage) {
  secrets.secrets[OpenAICompatibleProvider::keyAccount] = "sk-secret";
  server.willAnswer({httpAnswer(403, "sk-secret is not welcome")});
  EXPECT_EQ(models(openAI).error().message, "The server answered 403. *** is not welcome");
  EXPECT_NE(server.received()[0].head.find("\r\nAuthorization: Bearer sk-secret\r\n"), std::string::npos);
}

TEST_F(ServerWeather, AnswersAreUsedOrBecomeASentence) {
  const std::string page = "<html><head><title>502 Bad Gateway</title></head></html>";
  const std::string text = "writes finds you well.", none = "The server's answer wasn't a completion";
  const auto at = "The server at " + server.url();
  const std::pair<LoopbackServer::Answer, std::string> table[] = {
      {{httpAnswer(200, written, "text/html")}, text},
      {{httpAnswer(201, written, "")}, text},
      {{"HTTP/1.0 200 OK\r\n\r\n" + written, {}, true}, text},
      {{"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n4\r\n{\"re\r\n"
        "d\r\nsponse\":\" a\"}\r\n0\r\n\r\n"},
       "writes a"},
      {{httpAnswer(404, "404 page not found", "text/plain")}, "The server answered 404. 404 page not found"},
      {{httpAnswer(502, page, "text/html")}, "The server answered 502. " + page},
      {{httpAnswer(200, page, "text/html")}, none},
      {{httpAnswer(200, std::string("\0\xFF{", 3))}, none},
      {{httpAnswer(200, "")}, none},
      {{"HTTP/1.1 302 Found\r\nLocation: http://127.0.0.1:9/\r\nContent-Length: 0\r\n\r\n"},
       "The server answered 302. "},
      {{"HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n{\"respon", {}, true},
       at + " closed the connection before its answer was complete"},
      {{"HTTP/1.1 200 OK\r\n\r\n", {}, false, true}, at + " answered with far too much"}};
  for (const auto& [answer, expected] : table) EXPECT_EQ(completeWith(answer), expected) << answer.bytes;
}

}  // namespace
}  // namespace nimbletype
