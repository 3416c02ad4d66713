#include "platform/qt/network/qt_http_downloads.h"

#include <sys/resource.h>

#include <csignal>

#include "platform/qt/system/qt_main_loop.h"
#include "tests/platform/network/http_downloads_conformance.h"
#include "tools/stage/servers/https_file_server.h"
#include "tools/stage/servers/loopback_server.h"
#include "tools/stage/waiting.h"
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

struct QtDownloadsHarness : RealTime {
  HttpDownloads& downloads() { return *qt; }
  void dropDownloads() { qt.reset(); }
  std::string address() const { return url; }
  void serve(const ScriptedFileServer& served, const std::vector<HttpHeader>& headers) {
    if (!served.reachable) return server.reset();
    server->willAnswer({.bytes = onTheWire(served, headers), .closes = served.dropsAfter >= 0});
  }
  int abandoned() const { return server->closedByClient(); }

  QtMainLoop loop;
  std::unique_ptr<LoopbackServer> server = std::make_unique<LoopbackServer>();
  std::string url = server->url("/file");
  std::unique_ptr<QtHttpDownloads> qt = std::make_unique<QtHttpDownloads>(loop, Milliseconds(500));
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

struct QtHttpDownloadsTest : HttpDownloadsConformance<QtDownloadsHarness> {
  QtHttpDownloadsTest() { qt = std::make_unique<QtHttpDownloads>(loop); }

  // Takes any body that the server sends in good order.
  Task fetch(const std::string& address) {
    ended.reset();
    auto taking = handlers(0);
    taking.place = [](const DownloadHead& head) {
      return head.status < 300 ? std::optional(0) : std::nullopt;
    };
    return downloads().start({address, {}, file, 1 << 30}, taking);
  }
  Outcome outcomeOf(const std::string& address) {
    const Task task = fetch(address);
    return awaitEnd();
  }
};

// Over the real thing, with a certificate that only the user trusts.
struct HttpsDownloadsTest : QtHttpDownloadsTest {
  HttpsDownloadsTest() {
    std::filesystem::create_directory(served);
    std::ofstream(served / "a", std::ios::binary) << whole;
    secure.emplace(served);
    qputenv("SSL_CERT_FILE", secure->authority().c_str());
  }
  ~HttpsDownloadsTest() override { qunsetenv("SSL_CERT_FILE"); }

  const std::string whole = std::string(2'000'000, 'a') + "the end";
  const std::filesystem::path served = folder.path / "served";
  std::optional<HttpsFileServer> secure;
};

TEST_F(HttpsDownloadsTest, RedirectsLeadToHttpsOrNowhere) {
  const struct {
    std::string url;
    DownloadEnd::Case result;
    int status;
  } cases[] = {
      {secure->url("/ranges/a"), complete, 200},      {secure->plainUrl("/ranges/a"), complete, 200},
      {secure->url("/moved/a"), complete, 200},       {secure->plainUrl("/moved/a"), complete, 200},
      {secure->url("/plain/a"), redirectRefused, 0},  {secure->url("/circle/a"), redirectRefused, 0},
      {secure->url("/ranges/none"), turnedAway, 404}, {secure->url("/unavailable/a"), turnedAway, 503}};
  for (const auto& [wanted, result, status] : cases) {
    std::filesystem::remove(file);
    const auto [end, head] = outcomeOf(wanted);
    EXPECT_EQ(end.result, result) << wanted << " " << end.detail;
    EXPECT_EQ(head ? head->status : 0, status) << wanted;
    EXPECT_EQ(content(), result == complete ? whole : "") << wanted;
  }
  qunsetenv("SSL_CERT_FILE");
  qt = std::make_unique<QtHttpDownloads>(loop);
  const auto [end, head] = outcomeOf(secure->url("/ranges/a"));
  EXPECT_EQ(end.result, notConnected) << "the authority is unknown";
  EXPECT_FALSE(head);
}

TEST_F(HttpsDownloadsTest, GoesOnAfterTheServerWentAway) {
  const Task task = fetch(secure->url("/slow/200k/a"));
  waitFor("the beginning", [&] { return content().size() > 100'000; });
  secure->stop();
  const auto first = awaitEnd();
  EXPECT_EQ(first.end.result, dropped);
  const auto held = content().size();
  EXPECT_LT(held, whole.size());
  secure->start();
  auto appending = handlers(0);
  appending.place = [held](const DownloadHead& head) {
    return head.status == 206 ? std::optional<std::int64_t>(held) : std::nullopt;
  };
  const std::string range = "bytes=" + std::to_string(held) + "-";
  const std::vector<HttpHeader> headers{{"Range", range},
                                        {"If-Range", std::string(headerValue(first.head->headers, "ETag"))}};
  const Task rest = downloads().start({secure->url("/ranges/a"), headers, file, 1 << 30}, appending);
  const auto last = awaitEnd();
  EXPECT_EQ(last.end.result, complete) << last.end.detail;
  EXPECT_EQ(content(), whole);
  EXPECT_EQ(secure->log().back(), "206 " + std::to_string(whole.size() - held) + " /ranges/a " + range);
}

// What a full disk does as well, a limit does here: a write that fails when some of it has been done.
TEST_F(QtHttpDownloadsTest, WhatDoesNotFitIsNotWritten) {
  const FileSizeLimit limit(50'000);
  server->willAnswer({.bytes = "HTTP/1.1 200 OK\r\n\r\n", .endless = true});
  const auto [end, head] = outcomeOf(url);
  EXPECT_EQ(end.result, notWritten);
  EXPECT_EQ(end.detail, "File too large");
  EXPECT_EQ(content().size(), 50'000U);
  waitFor("the connection to be closed", [&] { return abandoned() == 1; });
}

// What comes faster than it can be written stays with the server.
TEST_F(QtHttpDownloadsTest, ASlowDiskSlowsTheServerDown) {
  server->willAnswer({.bytes = "HTTP/1.1 200 OK\r\nContent-Length: 1000000000\r\n\r\n", .endless = true});
  const auto gate = std::make_shared<Gate>();
  auto slow = handlers({});
  slow.place = [gate](const DownloadHead&) {
    gate->pass();
    return std::nullopt;
  };
  const Task task = downloads().start({url, {}, file, 1 << 30}, slow);
  gate->awaitArrival();
  std::uint64_t before = 0;
  int stillFor = 0;
  waitFor("the server to come to rest", [&] {
    stillFor = std::exchange(before, server->bytesSent()) == server->bytesSent() ? stillFor + 1 : 0;
    return stillFor >= 20 || before > 200'000'000;
  });
  EXPECT_LT(before, 50'000'000U);
  gate->open();
  awaitEnd();
}

}  // namespace
}  // namespace nimbletype
