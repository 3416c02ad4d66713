#include "platform/qt/network/qt_http_client.h"

#include <sstream>

#include "tests/platform/network/http_client_conformance.h"
#include "tools/stage/servers/https_file_server.h"
#include "tools/stage/servers/loopback_server.h"
#include "tools/stage/waiting.h"

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
  std::istringstream lines(received.head);
  lines >> request.method;
  for (std::string line; std::getline(lines, line);)
    if (const auto colon = line.find(": "); colon != line.npos)
      request.headers.push_back({line.substr(0, colon), line.substr(colon + 2, line.size() - colon - 3)});
  return request;
}

struct QtClientHarness : RealTime {
  HttpClient& client() { return *qt; }
  void dropClient() { qt.reset(); }
  std::string address() const { return server.url("/"); }
  void willReply(const HttpReply& reply, Milliseconds delay = {}) {
    server.willAnswer({.bytes = onTheWire(reply), .delay = delay});
  }
  int received() const { return static_cast<int>(server.received().size()); }
  HttpRequest lastRequest() const { return parsed(server.received().back()); }
  int abandoned() const { return server.closedByClient(); }

  LoopbackServer server;
  std::unique_ptr<QtHttpClient> qt = std::make_unique<QtHttpClient>();
};

INSTANTIATE_TYPED_TEST_SUITE_P(Qt, HttpClientConformance, QtClientHarness);

struct QtHttpClientTest : HttpClientConformance<QtClientHarness> {
  Result get(const std::string& url) { return resultOf({.url = url, .headers = {}, .body = ""}); }
  Result reply(LoopbackServer::Answer answer) {
    server.willAnswer(std::move(answer));
    return get(address());
  }
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
  for (const std::string& bytes :
       {std::string(), std::string("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nshort"),
        std::string("HTTP/1.1 200 OK\r\nContent-Le"), chunked + "5\r\nshort\r\n",
        std::string("garbage\r\n\r\n"), std::string(1000, '\0')}) {
    server.willAlwaysAnswer({.bytes = bytes, .closes = true});  // Qt tries again
    EXPECT_EQ(failureOf(request()), dropped) << bytes;
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
  server.willAnswer({.bytes = "HTTP/1.1 200 OK\r\n\r\n", .endless = true});
  EXPECT_EQ(failureOf(request()), tooLarge);
  waitForAbandoned(1);
  EXPECT_LT(server.bytesSent(), 4 * HttpClient::longestBody);  // the system holds some as well
}

TEST_F(QtHttpClientTest, TheTimeIsThatOfTheWholeReply) {
  server.willAnswer({.bytes = "HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nthe beginning"});
  auto hurried = request();
  hurried.timeout = Milliseconds(100);
  EXPECT_EQ(failureOf(hurried), timedOut);
  waitForAbandoned(1);
}

TEST_F(QtHttpClientTest, NobodyThereIsNotConnected) {
  const auto url = LoopbackServer().url("/");
  for (const auto& gone : {url, std::string("http://no-such-host.invalid/")}) {
    const auto result = get(gone);
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error().reason, notConnected) << gone << result.error().detail;
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
  const HttpRequest wanted{.url = secure.url("/ranges/none"), .headers = {}, .body = ""};
  EXPECT_EQ(failureOf(wanted), notTrusted);
  qputenv("SSL_CERT_FILE", secure.authority().c_str());
  qt = std::make_unique<QtHttpClient>();
  const auto result = resultOf(wanted);
  qunsetenv("SSL_CERT_FILE");
  ASSERT_TRUE(result) << result.error().detail;
  EXPECT_EQ(result->status, 404);
}

}  // namespace
}  // namespace nimbletype
