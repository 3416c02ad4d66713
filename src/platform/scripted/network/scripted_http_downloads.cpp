#include "platform/scripted/network/scripted_http_downloads.h"

#include <algorithm>
#include <utility>

#include "platform/network/download_sink.h"

namespace nimbletype {

using enum DownloadEnd::Case;

class ScriptedHttpDownloads::Transfer : public std::enable_shared_from_this<Transfer> {
 public:
  Transfer(MainLoop& loop, DownloadRequest request, Handlers handlers, ScriptedFileServer server,
           const std::shared_ptr<Transfers>& all)
      : loop_(loop),
        sink_(std::move(request), std::move(handlers), Milliseconds(0)),
        server_(std::move(server)),
        all_(all) {}

  void start() { next(&Transfer::connect); }
  // Its own callback may be running.
  void stop() {
    timer_.cancel();
    sink_.close();
  }

 private:
  void next(void (Transfer::*step)(), Milliseconds extra = {}) {
    timer_ = loop_.after(server_.tick + extra, [self = weak_from_this(), step] {
      if (const auto alive = self.lock()) ((*alive).*step)();
    });
  }

  void connect() {
    if (const auto trouble = sink_.open()) return end(*trouble);
    if (!server_.reachable) return end({notConnected, "connection refused"});
    if (!server_.redirectsTo.empty() && !server_.redirectsTo.starts_with("https://"))
      return end({redirectRefused, server_.redirectsTo});
    answer_ = scriptedAnswer(server_, sink_.request().headers);
    if (const auto trouble = sink_.begin(answer_.head)) return end(*trouble);
    next(&Transfer::piece);
  }

  // Bytes until something other than the next piece happens.
  std::int64_t left() const {
    auto end = static_cast<std::int64_t>(answer_.body.size());
    for (const auto stop : {server_.dropsAfter, server_.fallsSilentAfter})
      if (stop >= 0) end = std::min(end, stop);
    return end - sent_;
  }

  void piece() {
    const auto count = static_cast<std::size_t>(std::min(left(), server_.bytesPerTick));
    const auto bytes = std::string_view(answer_.body).substr(static_cast<std::size_t>(sent_), count);
    const auto trouble = sink_.take(bytes);
    if (!isRunning()) return;
    if (trouble) return end(*trouble);
    sent_ += static_cast<std::int64_t>(count);
    if (left() > 0) return next(&Transfer::piece);
    if (sent_ == static_cast<std::int64_t>(answer_.body.size())) return end(sink_.whole());
    if (sent_ == server_.fallsSilentAfter) return next(&Transfer::silent, longestSilence);
    end({dropped, "the connection was closed"});
  }

  void silent() { end({dropped, "the connection fell silent"}); }

  // No longer once its owner has dropped it on hearing of the progress.
  bool isRunning() {
    const auto all = all_.lock();
    return all && all->contains(shared_from_this());
  }

  void end(const DownloadEnd& end) {
    timer_.cancel();
    const auto self = shared_from_this();
    if (const auto all = all_.lock()) all->erase(self);
    sink_.end(end);
  }

  MainLoop& loop_;
  DownloadSink sink_;
  ScriptedFileServer server_;
  std::weak_ptr<Transfers> all_;
  ScriptedAnswer answer_;
  std::int64_t sent_ = 0;
  Task timer_;
};

Task ScriptedHttpDownloads::start(const DownloadRequest& request, Handlers handlers) {
  requests.push_back(request);
  const auto transfer = std::make_shared<Transfer>(loop_, request, std::move(handlers), server, transfers_);
  transfers_->insert(transfer);
  transfer->start();
  return Task([weak = std::weak_ptr(transfer), all = std::weak_ptr(transfers_), cancelled = cancelled_] {
    const auto running = all.lock();
    const auto alive = weak.lock();
    if (!running || !alive || running->erase(alive) == 0) return;
    alive->stop();
    ++*cancelled;
  });
}

}  // namespace nimbletype
