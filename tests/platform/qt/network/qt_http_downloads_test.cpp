#include "platform/qt/network/qt_http_downloads.h"

#include <sys/resource.h>

#include <csignal>

#include "platform/qt/system/qt_main_loop.h"
#include "tests/platform/network/http_downloads_conformance.h"
#include "tests/platform/qt/network/run_until.h"
#include "tests/platform/storage/temporary_folder.h"
#include "tools/stage/servers/https_file_server.h"
#include "tools/stage/servers/loopback_server.h"
#include "tools/stage/waiting_main_loop.h"

namespace nimbletype {
namespace {

using enum DownloadEnd::Case;

std::string onTheWire(const ScriptedFileServer& server, const std::vector<HttpHeader>& headers) {
  const auto [head, body] = scriptedAnswer(server, headers);
  if (!server.redirectsTo.empty())
    return "HTTP/1.1 302 Found\r\nContent-Length: 0\r\nLocation: " + server.redirectsTo + "\r\n\r\n";
  std::string bytes = "HTTP/1.1 " + std::to_string(head.status) + " Status\r\n";
  for (const auto& [name, value] : head.headers) bytes += name + ": " + value + "\r\n";
  bytes += "\r\n";
  for (const auto stop : {server.dropsAfter, server.fallsSilentAfter})
    if (stop >= 0) return bytes + body.substr(0, static_cast<std::size_t>(stop));
  return bytes + body;
}

struct QtDownloadsHarness {
  HttpDownloads& downloads() { return *downloads_; }
  void dropDownloads() { downloads_.reset(); }
  std::string address() const { return url_; }
  void serve(const ScriptedFileServer& server, const std::vector<HttpHeader>& headers) {
    if (!server.reachable) return server_.reset();
    server_->willAnswer({.bytes = onTheWire(server, headers), .closes = server.dropsAfter >= 0});
  }
  int abandoned() const { return server_->closedByClient(); }
  static bool runUntil(const std::function<bool()>& done) { return nimbletype::runUntil(done); }

  QtMainLoop loop_;
  std::unique_ptr<LoopbackServer> server_ = std::make_unique<LoopbackServer>();
  std::string url_ = server_->url("/file");
  std::unique_ptr<QtHttpDownloads> downloads_ = std::make_unique<QtHttpDownloads>(loop_, Milliseconds(500));
};

INSTANTIATE_TYPED_TEST_SUITE_P(Qt, HttpDownloadsConformance, QtDownloadsHarness);

// No file of this process grows beyond it.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
    ::getrlimit(RLIMIT_FSIZE, &before_);
    const rlimit limit{bytes, before_.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~FileSizeLimit() {
    ::setrlimit(RLIMIT_FSIZE, &before_);
    std::signal(SIGXFSZ, handler_);
  }
  FileSizeLimit(const FileSizeLimit&) = delete;
  FileSizeLimit& operator=(const FileSizeLimit&) = delete;

 private:
  void (*handler_)(int);
  rlimit before_{};
};

class QtHttpDownloadsTest : public testing::Test {
 protected:
  struct Outcome {
    DownloadEnd end;
    std::optional<DownloadHead> head;
  };

  HttpDownloads::Handlers handlers() {
    return {[](const DownloadHead& head) { return head.status < 300 ? std::optional(0) : std::nullopt; },
            [](std::int64_t) {},
            [this](const DownloadEnd& end, const auto& head) {
              outcome = {end, head};
            }};
  }
  DownloadRequest request(const std::string& url) const {
    return {url, {}, folder.path / "partial", 1 << 30};
  }
  Outcome outcomeOf(const DownloadRequest& request) {
    outcome.reset();
    const Task task = downloads.start(request, handlers());
    EXPECT_TRUE(runUntil([&] { return outcome.has_value(); })) << "the transfer never ended";
    return outcome.value_or(Outcome{});
  }

  const TemporaryFolder folder;
  QtMainLoop loop;
  QtHttpDownloads downloads{loop};
  std::optional<Outcome> outcome;
};

// Over the real thing, with a certificate that only the user trusts.
class HttpsDownloadsTest : public QtHttpDownloadsTest {
 protected:
  HttpsDownloadsTest() {
    std::filesystem::create_directory(served);
    std::ofstream(served / "a", std::ios::binary) << content;
    server.emplace(served);
    qputenv("SSL_CERT_FILE", server->authority().c_str());
  }
  ~HttpsDownloadsTest() override { qunsetenv("SSL_CERT_FILE"); }
  std::string downloaded() const {
    std::ifstream file(folder.path / "partial", std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  const std::string content = std::string(2'000'000, 'a') + "the end";
  const std::filesystem::path served = folder.path / "served";
  std::optional<HttpsFileServer> server;
};

TEST_F(HttpsDownloadsTest, RedirectsLeadToHttpsOrNowhere) {
  struct Case {
    std::string url;
    DownloadEnd::Case result;
    int status;
  };
  const Case cases[] = {
      {server->url("/ranges/a"), complete, 200},      {server->plainUrl("/ranges/a"), complete, 200},
      {server->url("/moved/a"), complete, 200},       {server->plainUrl("/moved/a"), complete, 200},
      {server->url("/plain/a"), redirectRefused, 0},  {server->url("/circle/a"), redirectRefused, 0},
      {server->url("/ranges/none"), turnedAway, 404}, {server->url("/unavailable/a"), turnedAway, 503}};
  for (const auto& [url, result, status] : cases) {
    std::filesystem::remove(folder.path / "partial");
    const auto [end, head] = outcomeOf(request(url));
    EXPECT_EQ(end.result, result) << url << " " << end.detail;
    EXPECT_EQ(head ? head->status : 0, status) << url;
    EXPECT_EQ(downloaded(), result == complete ? content : "") << url;
  }
}

TEST_F(HttpsDownloadsTest, GoesOnAfterTheServerWentAway) {
  {
    const Task task = downloads.start(request(server->url("/slow/200k/a")), handlers());
    EXPECT_TRUE(runUntil([&] { return downloaded().size() > 100'000; })) << "nothing came";
    server->stop();
    EXPECT_TRUE(runUntil([&] { return outcome.has_value(); })) << "the transfer never ended";
  }
  EXPECT_EQ(outcome->end.result, dropped);
  const auto held = downloaded().size();
  EXPECT_LT(held, content.size());
  server->start();
  auto rest = request(server->url("/ranges/a"));
  rest.headers = {{"Range", "bytes=" + std::to_string(held) + "-"},
                  {"If-Range", std::string(headerValue(outcome->head->headers, "ETag"))}};
  auto appending = handlers();
  appending.place = [held](const DownloadHead& head) {
    return head.status == 206 ? std::optional<std::int64_t>(held) : std::nullopt;
  };
  outcome.reset();
  const Task task = downloads.start(rest, appending);
  EXPECT_TRUE(runUntil([&] { return outcome.has_value(); })) << "the transfer never ended";
  EXPECT_EQ(outcome->end.result, complete) << outcome->end.detail;
  EXPECT_EQ(downloaded(), content);
  EXPECT_EQ(server->log().back(), "206 " + std::to_string(content.size() - held) +
                                      " /ranges/a bytes=" + std::to_string(held) + "-");
}

TEST_F(HttpsDownloadsTest, AnUnknownAuthorityIsNotConnected) {
  qunsetenv("SSL_CERT_FILE");
  const auto [end, head] = outcomeOf(request(server->url("/ranges/a")));
  EXPECT_EQ(end.result, notConnected);
  EXPECT_FALSE(head);
}

// What a full disk does as well, a limit does here: a write that fails when some of it has been done.
TEST_F(QtHttpDownloadsTest, WhatDoesNotFitIsNotWritten) {
  const FileSizeLimit limit(50'000);
  LoopbackServer server;
  server.willAnswer({.bytes = "HTTP/1.1 200 OK\r\n\r\n", .endless = true});
  const auto [end, head] = outcomeOf(request(server.url("/")));
  EXPECT_EQ(end.result, notWritten);
  EXPECT_EQ(end.detail, "File too large");
  EXPECT_EQ(std::filesystem::file_size(folder.path / "partial"), 50'000U);
  EXPECT_TRUE(runUntil([&] { return server.closedByClient() == 1; })) << "the connection stayed open";
}

// What comes faster than it can be written stays with the server.
TEST_F(QtHttpDownloadsTest, ASlowDiskSlowsTheServerDown) {
  LoopbackServer server;
  server.willAnswer({.bytes = "HTTP/1.1 200 OK\r\nContent-Length: 1000000000\r\n\r\n", .endless = true});
  const auto gate = std::make_shared<Gate>();
  auto slow = handlers();
  slow.place = [gate](const DownloadHead&) {
    gate->pass();
    return std::nullopt;
  };
  const Task task = downloads.start(request(server.url("/")), slow);
  gate->awaitArrival();
  std::uint64_t before = 0;
  int stillFor = 0;
  EXPECT_TRUE(runUntil([&] {
    stillFor = std::exchange(before, server.bytesSent()) == server.bytesSent() ? stillFor + 1 : 0;
    return stillFor >= 20 || before > 200'000'000;
  })) << "the server never came to rest";
  EXPECT_LT(before, 50'000'000U);
  gate->open();
  EXPECT_TRUE(runUntil([&] { return outcome.has_value(); })) << "the transfer never ended";
}

}  // namespace
}  // namespace nimbletype
