#pragma once
#import <Foundation/Foundation.h>

#include "platform/network/http_downloads.h"
#include "platform/system/main_loop.h"

@class NimbletypeDownloadDelegate;

namespace nimbletype {

// The port over a URL session that waits for a network and gives up after six hours. Redirects are followed
// ten times at most. A file is locked while it is written: a second transfer into it, by whichever process,
// is `notWritten`. See mac_url_loading.h for trust.
class MacHttpDownloads final : public HttpDownloads {
 public:
  // A transfer is dropped when nothing has come for `longestSilence`. The loop must outlive this object.
  explicit MacHttpDownloads(MainLoop& loop, Milliseconds longestSilence = Milliseconds(60'000));
  ~MacHttpDownloads() override;
  MacHttpDownloads(const MacHttpDownloads&) = delete;
  MacHttpDownloads& operator=(const MacHttpDownloads&) = delete;

  // The task's destruction does not wait longer than two seconds for a disk that hangs.
  [[nodiscard]] Task start(const DownloadRequest& request, Handlers handlers) override;

 private:
  MainLoop& loop_;
  NimbletypeDownloadDelegate* delegate_;
  NSURLSession* session_;
};

}  // namespace nimbletype
