#pragma once
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

#include "platform/network/download_file.h"
#include "platform/network/http_downloads.h"
#include "platform/system/main_loop.h"

namespace nimbletype {

// What becomes of what arrives in one transfer, whoever brings it. Lives on the transfer's thread and calls
// the handlers there. Each step says with which end the transfer has to stop; absent while all is well.
class DownloadSink {
 public:
  using Trouble = std::optional<DownloadEnd>;

  DownloadSink(DownloadRequest request, HttpDownloads::Handlers handlers,
               Milliseconds reportEvery = Milliseconds(200));

  const DownloadRequest& request() const { return request_; }
  // Before anything is asked for, so that of two transfers into one file the second gets no further.
  Trouble open();
  // The head of the final reply.
  Trouble begin(DownloadHead head);
  bool hasBegun() const { return head_.has_value(); }
  Trouble take(std::string_view bytes);
  // `complete`, unless the server had announced more.
  DownloadEnd whole() const;

  // Closes the file and tells the end.
  void end(const DownloadEnd& end);
  // Closes the file and tells nothing.
  void close() { file_.close(); }

 private:
  void report();

  DownloadRequest request_;
  HttpDownloads::Handlers handlers_;
  Milliseconds reportEvery_;
  MonotonicTime lastReport_;
  DownloadFile file_;
  std::optional<DownloadHead> head_;
  std::int64_t received_ = 0;
};

// Handlers for a transfer's thread. Those of `wanted` run on the main thread, as long as it is alive there.
HttpDownloads::Handlers postedTo(MainLoop& loop, const std::shared_ptr<HttpDownloads::Handlers>& wanted);

}  // namespace nimbletype
