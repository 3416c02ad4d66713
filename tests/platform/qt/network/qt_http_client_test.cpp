#include "platform/qt/network/qt_http_client.h"

#include "tests/platform/network/http_client_conformance.h"
#include "tests/platform/qt/network/run_until.h"
#include "tools/stage/servers/https_file_server.h"
#include "tools/stage/servers/loopback_server.h"

namespace nimbletype {
namespace {

using enum HttpFailure::Case;

std::string onTheWire(const HttpReply& reply) {
  const auto type = headerValue(reply.headers, "Content-Type");
  const auto location = headerValue(reply.headers, "Location");
  std::string bytes = httpAnswer(reply.status, reply.body, type);
  if (!location.empty()) bytes.insert(bytes.find("\r\n") + 2, "Location: " + std::string(location) + "\r\n");
  return bytes;
}

HttpRequest parsed(const LoopbackServer::Received& received) {
  HttpRequest request{.url = "", .headers = {}, .body = received.body};
  request.method = received.head.substr(0, received.head.find(' '));
  for (std::size_t start = received.head.find("\r\n") + 2, end; start < received.head.size() - 2;
       start = end + 2) {
    end = received.head.find("\r\n", start);
    const auto colon = received.head.find(": ", start);
    request.headers.push_back(
        {received.head.substr(start, colon - start), received.head.substr(colon + 2, end - colon - 2)});
  }
  return request;
}

struct QtClientHarness {
  HttpClient& client() { return *client_; }
  void dropClient() { client_.reset(); }
  std::string address() const { return server_.url("/"); }
  void willReply(const HttpReply& reply, Milliseconds delay = {}) {
    server_.willAnswer({.bytes = onTheWire(reply), .delay = delay});
  }
  int received() const { return static_cast<int>(server_.received().size()); }
  HttpRequest lastRequest() const { return parsed(server_.received().back()); }
  int abandoned() const { return server_.closedByClient(); }
  static bool runUntil(const std::function<bool()>& done) { return nimbletype::runUntil(done); }

  LoopbackServer server_;
  std::unique_ptr<QtHttpClient> client_ = std::make_unique<QtHttpClient>();
};

INSTANTIATE_TYPED_TEST_SUITE_P(Qt, HttpClientConformance, QtClientHarness);

class QtHttpClientTest : public testing::Test {
 protected:
  using Result = std::expected<HttpReply, HttpFailure>;

  Result resultOf(const HttpRequest& request) {
    std::optional<Result> result;
    const Task task = client.send(request, [&](Result told) { result = std::move(told); });
    EXPECT_TRUE(runUntil([&] { return result.has_value(); })) << "nothing was ever told";
    return result.value_or(std::unexpected(HttpFailure{}));
  }
  Result get(const std::string& url, Milliseconds timeout = Milliseconds(20'000)) {
    return resultOf({.url = url, .headers = {}, .body = "", .timeout = timeout});
  }
  Result reply(LoopbackServer::Answer answer) {
    server.willAnswer(std::move(answer));
    return get(server.url("/"));
  }

  LoopbackServer server;
  QtHttpClient client;
};

TEST_F(QtHttpClientTest, SendsNothingThatNobodyAskedFor) {
  server.willAlwaysAnswer({.bytes = httpAnswer(200, "{}")});
  EXPECT_TRUE(get(server.url("/api/tags")));
  EXPECT_TRUE(
      resultOf({"POST", server.url("/\u00e4 b?c=%2F"), {{"Content-Type", "application/json"}}, "{}"}));
  const auto host = "Host: 127.0.0.1:" + std::to_string(server.port()) + "\r\n";
  const std::string usual = "User-Agent: Nimbletype\r\nAccept-Encoding: identity\r\nAccept-Language: *\r\n";
  EXPECT_EQ(server.received()[0].head,
            "GET /api/tags HTTP/1.1\r\n" + host + usual + "Connection: Keep-Alive\r\n\r\n");
  EXPECT_EQ(server.received()[1].head,
            "POST /%C3%A4%20b?c=%2F HTTP/1.1\r\n" + host + usual +
                "Content-Type: application/json\r\nContent-Length: 2\r\nConnection: Keep-Alive\r\n\r\n");
}

TEST_F(QtHttpClientTest, KeepsConnectionsForTheNextRequest) {
  server.willAlwaysAnswer({.bytes = httpAnswer(404, "<html>no</html>", "text/html")});
  for (int i = 0; i < 20; ++i) EXPECT_TRUE(get(server.url("/")));
  EXPECT_EQ(server.connections(), 1);
}

TEST_F(QtHttpClientTest, BrokenRepliesAreDropped) {
  const std::string chunked = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n";
  const std::string broken[] = {"",
                                "HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nshort",
                                "HTTP/1.1 200 OK\r\nContent-Le",
                                chunked + "5\r\nshort\r\n",
                                "garbage\r\n\r\n",
                                std::string(1000, '\0')};
  for (const auto& bytes : broken) {
    server.willAlwaysAnswer({.bytes = bytes, .closes = true});  // Qt tries again
    const auto result = get(server.url("/"));
    ASSERT_FALSE(result) << bytes << " -> " << result->status << " " << result->body;
    EXPECT_EQ(result.error().reason, dropped) << bytes << " " << result.error().detail;
  }
}

// Without asking anybody for a name and a password.
TEST_F(QtHttpClientTest, ChallengesAreReplies) {
  for (const std::string kind :
       {"Basic realm=\"x\"", "Digest realm=\"x\", nonce=\"y\"", "NTLM", "Negotiate"}) {
    auto bytes = httpAnswer(401, "who?");
    bytes.insert(bytes.find("\r\n") + 2, "WWW-Authenticate: " + kind + "\r\n");
    const auto result = reply({.bytes = bytes});
    ASSERT_TRUE(result) << kind << result.error().detail;
    EXPECT_EQ(result->status, 401);
    EXPECT_EQ(result->body, "who?");
  }
}

TEST_F(QtHttpClientTest, EndlessRepliesAreCutOff) {
  const auto result = reply({.bytes = "HTTP/1.1 200 OK\r\n\r\n", .endless = true});
  ASSERT_FALSE(result);
  EXPECT_EQ(result.error().reason, tooLarge);
  EXPECT_TRUE(runUntil([&] { return server.closedByClient() == 1; })) << "the connection stayed open";
  EXPECT_LT(server.bytesSent(), 4 * HttpClient::longestBody);  // the system holds some as well
}

TEST_F(QtHttpClientTest, TheTimeIsThatOfTheWholeReply) {
  server.willAnswer({.bytes = "HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nthe beginning"});
  const auto result = get(server.url("/"), Milliseconds(100));
  ASSERT_FALSE(result);
  EXPECT_EQ(result.error().reason, timedOut);
  EXPECT_TRUE(runUntil([&] { return server.closedByClient() == 1; })) << "the connection stayed open";
}

TEST_F(QtHttpClientTest, NobodyThereIsNotConnected) {
  auto gone = std::make_unique<LoopbackServer>();
  const auto url = gone->url("/");
  gone.reset();
  for (const auto& address : {url, std::string("http://no-such-host.invalid/")}) {
    const auto result = get(address);
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error().reason, notConnected) << address << result.error().detail;
    EXPECT_NE(result.error().detail, "");
  }
}

// Connections that the server has closed since are nobody's fault.
TEST_F(QtHttpClientTest, OutlivesConnectionsThatWentStale) {
  for (int i = 0; i < 10; ++i) {
    const auto result = reply({.bytes = httpAnswer(200, "fine"), .closes = true});
    ASSERT_TRUE(result) << result.error().detail;
    EXPECT_EQ(result->body, "fine");
  }
}

TEST_F(QtHttpClientTest, FindsTheServerUnderItsName) {
  server.willAlwaysAnswer({.bytes = httpAnswer(200, "fine")});
  const auto url = "http://localhost:" + std::to_string(server.port()) + "/";
  for (int i = 0; i < 3; ++i) EXPECT_TRUE(get(url));
  EXPECT_EQ(server.connections(), 1);
}

TEST_F(QtHttpClientTest, TrustsWhatTheSystemOrTheUserDoes) {
  const HttpsFileServer secure(std::filesystem::temp_directory_path());
  const auto url = secure.url("/ranges/none");
  const auto untrusted = get(url);
  ASSERT_FALSE(untrusted);
  EXPECT_EQ(untrusted.error().reason, notTrusted) << untrusted.error().detail;

  qputenv("SSL_CERT_FILE", secure.authority().c_str());
  QtHttpClient trusting;
  std::optional<Result> result;
  const HttpRequest request{.url = url, .headers = {}, .body = ""};
  const Task task = trusting.send(request, [&](Result told) { result = std::move(told); });
  EXPECT_TRUE(runUntil([&] { return result.has_value(); })) << "nothing was ever told";
  qunsetenv("SSL_CERT_FILE");
  ASSERT_TRUE(result && *result) << result->error().detail;
  EXPECT_EQ((*result)->status, 404);
}

}  // namespace
}  // namespace nimbletype
