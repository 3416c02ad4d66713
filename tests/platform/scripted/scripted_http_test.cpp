#include "platform/scripted/network/scripted_http_client.h"
#include "platform/scripted/network/scripted_http_downloads.h"
#include "tests/platform/network/http_client_conformance.h"
#include "tests/platform/network/http_downloads_conformance.h"
#include "tests/platform/scripted/virtual_time.h"

namespace nimbletype {
namespace {

struct ScriptedClientHarness : VirtualTime {
  HttpClient& client() { return *scripted; }
  void dropClient() {
    scripted.reset();
    abandonedAtEnd = 1;
  }
  static std::string address() { return "http://server/"; }
  void willReply(const HttpReply& reply, Milliseconds delay = {}) {
    scripted->answers.push_back({reply, delay});
  }
  int received() const { return static_cast<int>(scripted->requests.size()); }
  HttpRequest lastRequest() const { return scripted->requests.back(); }
  int abandoned() const { return scripted ? scripted->cancelled() : abandonedAtEnd; }

  std::unique_ptr<ScriptedHttpClient> scripted = std::make_unique<ScriptedHttpClient>(loop);
  int abandonedAtEnd = 0;
};

struct ScriptedDownloadsHarness : VirtualTime {
  HttpDownloads& downloads() { return *scripted; }
  void dropDownloads() { scripted.reset(); }
  static std::string address() { return "http://server/file"; }
  void serve(const ScriptedFileServer& server, const std::vector<HttpHeader>&) { scripted->server = server; }
  int abandoned() const { return scripted->cancelled(); }

  std::unique_ptr<ScriptedHttpDownloads> scripted = std::make_unique<ScriptedHttpDownloads>(loop);
};

INSTANTIATE_TYPED_TEST_SUITE_P(Scripted, HttpClientConformance, ScriptedClientHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Scripted, HttpDownloadsConformance, ScriptedDownloadsHarness);

}  // namespace
}  // namespace nimbletype
