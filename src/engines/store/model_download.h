#pragma once
#include <cstdint>
#include <expected>
#include <functional>

#include "engines/store/download_failure.h"
#include "engines/store/model_folder.h"
#include "platform/network/http_downloads.h"
#include "platform/system/main_loop.h"
#include "platform/system/system_log.h"

namespace nimbletype {

// Fetches a model into its folder's partial file. What has come outlives interruptions, the process's end
// included, and the next start goes on from there.
class ModelDownload {
 public:
  using Failure = DownloadFailure;
  struct Handlers {
    std::function<void(std::int64_t bytesHeld)> progress;
    std::function<void(std::expected<void, Failure>)> done;  // not after `cancel`
  };
  static constexpr Milliseconds longestTransfer = std::chrono::hours(6);

  ModelDownload(MainLoop& loop, HttpDownloads& downloads, SystemLog& log, ModelSpec spec, ModelFolder folder);

  // Replaces a transfer that is under way. The folder must be there.
  void start(Handlers handlers);
  // Keeps what has come.
  void cancel();

 private:
  void transfer(std::int64_t held);
  void transferred(const DownloadEnd& end, const std::optional<DownloadHead>& head);
  void handleRefusal(const DownloadHead& head);
  void startOver();
  void discard();
  void interrupted();
  void finish(std::expected<void, Failure> result);

  MainLoop& loop_;
  HttpDownloads& downloads_;
  SystemLog& log_;
  ModelSpec spec_;
  ModelFolder folder_;
  Handlers handlers_;
  std::int64_t held_ = 0;  // when the running transfer began
  std::string validator_;  // of those bytes
  Task timeout_, transfer_;
};

}  // namespace nimbletype
