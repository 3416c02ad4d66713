#include "platform/scripted/network/scripted_http_client.h"
#include "platform/scripted/network/scripted_http_downloads.h"
#include "platform/scripted/system/virtual_main_loop.h"
#include "tests/platform/network/http_client_conformance.h"
#include "tests/platform/network/http_downloads_conformance.h"

namespace nimbletype {
namespace {

bool advanceUntil(VirtualMainLoop& loop, const std::function<bool()>& done) {
  for (int i = 0; i < 2000 && !done(); ++i) loop.advance(Milliseconds(50));
  return done();
}

struct ScriptedClientHarness {
  HttpClient& client() { return *client_; }
  void dropClient() {
    client_.reset();
    abandonedAtEnd_ = 1;
  }
  static std::string address() { return "http://server/"; }
  void willReply(const HttpReply& reply, Milliseconds delay = {}) {
    client_->answers.push_back({reply, delay});
  }
  int received() const { return static_cast<int>(client_->requests.size()); }
  HttpRequest lastRequest() const { return client_->requests.back(); }
  int abandoned() const { return client_ ? client_->cancelled() : abandonedAtEnd_; }
  bool runUntil(const std::function<bool()>& done) { return advanceUntil(loop_, done); }

  VirtualMainLoop loop_;
  std::unique_ptr<ScriptedHttpClient> client_ = std::make_unique<ScriptedHttpClient>(loop_);
  int abandonedAtEnd_ = 0;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Scripted, HttpClientConformance, ScriptedClientHarness);

struct ScriptedDownloadsHarness {
  HttpDownloads& downloads() { return *downloads_; }
  void dropDownloads() { downloads_.reset(); }
  static std::string address() { return "http://server/file"; }
  void serve(const ScriptedFileServer& server, const std::vector<HttpHeader>&) {
    downloads_->server = server;
  }
  int abandoned() const { return downloads_->cancelled(); }
  // In small steps: what is looked for may be over soon.
  bool runUntil(const std::function<bool()>& done) {
    for (int i = 0; i < 100'000 && !done(); ++i) loop_.advance(Milliseconds(1));
    return done();
  }

  VirtualMainLoop loop_;
  std::unique_ptr<ScriptedHttpDownloads> downloads_ = std::make_unique<ScriptedHttpDownloads>(loop_);
};

INSTANTIATE_TYPED_TEST_SUITE_P(Scripted, HttpDownloadsConformance, ScriptedDownloadsHarness);

}  // namespace
}  // namespace nimbletype
