#pragma once
#include <memory>

#include "platform/network/http_downloads.h"
#include "platform/system/main_loop.h"

namespace nimbletype {

// The port over Qt, on a thread that starts with the first transfer. Redirects are followed ten times at
// most. A file is locked while it is written: a second transfer into it, by whichever process, is
// `notWritten`. See `QtNetwork` for proxies and trust.
class QtHttpDownloads final : public HttpDownloads {
 public:
  // A transfer is dropped when nothing has come for `longestSilence`. The loop must outlive this object.
  explicit QtHttpDownloads(MainLoop& loop, Milliseconds longestSilence = Milliseconds(60'000));
  ~QtHttpDownloads() override;  // ends what is under way as a destroyed task does

  // The task's destruction does not wait longer than two seconds for a disk that hangs.
  [[nodiscard]] Task start(const DownloadRequest& request, Handlers handlers) override;

 private:
  class Transfers;

  MainLoop& loop_;
  Milliseconds longestSilence_;
  std::shared_ptr<Transfers> transfers_;  // made when first needed; tasks may outlive this object
};

}  // namespace nimbletype
