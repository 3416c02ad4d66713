#pragma once
#include <memory>
#include <set>
#include <vector>

#include "platform/network/http_downloads.h"
#include "platform/scripted/network/scripted_file_server.h"
#include "platform/system/main_loop.h"

namespace nimbletype {

// Downloads from a server in the script, into real files. The reply's head arrives one tick after the start
// and each piece of the body one tick after the one before; the end comes with the last piece. All on the
// main thread, `place` too.
class ScriptedHttpDownloads final : public HttpDownloads {
 public:
  static constexpr Milliseconds longestSilence{60'000};

  explicit ScriptedHttpDownloads(MainLoop& loop) : loop_(loop) {}

  [[nodiscard]] Task start(const DownloadRequest& request, Handlers handlers) override;

  // How many transfers lost their task before they ended.
  int cancelled() const { return *cancelled_; }
  // Those that have neither ended nor been cancelled.
  std::size_t running() const { return transfers_->size(); }

  ScriptedFileServer server;              // each transfer meets it as it is at its start
  std::vector<DownloadRequest> requests;  // in order

 private:
  class Transfer;
  using Transfers = std::set<std::shared_ptr<Transfer>>;

  MainLoop& loop_;
  std::shared_ptr<Transfers> transfers_ = std::make_shared<Transfers>();  // tasks may outlive this object
  std::shared_ptr<int> cancelled_ = std::make_shared<int>(0);
};

}  // namespace nimbletype
