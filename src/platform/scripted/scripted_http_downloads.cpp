#include "platform/scripted/scripted_http_downloads.h"

#include <algorithm>
#include <utility>

#include "platform/download_file.h"

namespace nimbletype {

using enum DownloadEnd::Case;

class ScriptedHttpDownloads::Transfer : public std::enable_shared_from_this<Transfer> {
 public:
  Transfer(MainLoop& loop, DownloadRequest request, Handlers handlers, ScriptedFileServer server,
           const std::shared_ptr<Transfers>& all)
      : loop_(loop),
        request_(std::move(request)),
        handlers_(std::move(handlers)),
        server_(std::move(server)),
        all_(all) {}

  void start() { next(&Transfer::connect); }
  // Its own callback may be running.
  void stop() {
    timer_.cancel();
    file_.close();
  }

 private:
  void next(void (Transfer::*step)(), Milliseconds extra = {}) {
    timer_ = loop_.after(server_.tick + extra, [self = weak_from_this(), step] {
      if (const auto alive = self.lock()) ((*alive).*step)();
    });
  }

  void connect() {
    if (const auto opened = file_.open(request_.file); !opened) return end(notWritten, opened.error());
    if (!server_.reachable) return end(notConnected, "connection refused");
    if (!server_.redirectsTo.empty() && !server_.redirectsTo.starts_with("https://"))
      return end(redirectRefused, server_.redirectsTo);
    answer_ = scriptedAnswer(server_, request_.headers);
    head_ = answer_.head;
    const auto length = handlers_.place(answer_.head);
    if (!length) return end(turnedAway);
    if (const auto cut = file_.cutTo(*length); !cut) return end(notWritten, cut.error());
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
    const auto count = std::min(left(), server_.bytesPerTick);
    const auto fits = std::clamp<std::int64_t>(request_.most - file_.size(), 0, count);
    const auto kept = file_.append(std::string_view(answer_.body).substr(sent_, fits));
    if (!kept) return end(notWritten, kept.error());
    sent_ += fits;
    if (fits > 0 && !reported()) return;
    if (fits < count) return end(tooLong);
    if (left() > 0) return next(&Transfer::piece);
    finish();
  }

  // False when that was the end of this transfer: its owner may drop it on hearing of the progress.
  bool reported() {
    const std::weak_ptr<Transfers> all = all_;
    handlers_.progress(file_.size());
    const auto alive = all.lock();
    return alive && alive->contains(shared_from_this());
  }

  void finish() {
    if (sent_ == static_cast<std::int64_t>(answer_.body.size())) return end(complete);
    if (sent_ == server_.dropsAfter) return end(dropped, "the connection was closed");
    next(&Transfer::silent, longestSilence);
  }

  void silent() { end(dropped, "nothing came for a minute"); }

  void end(DownloadEnd::Case result, std::string detail = {}) {
    stop();
    const auto self = shared_from_this();
    if (const auto all = all_.lock()) all->erase(self);
    handlers_.done({result, std::move(detail)}, head_);
  }

  MainLoop& loop_;
  DownloadRequest request_;
  Handlers handlers_;
  ScriptedFileServer server_;
  std::weak_ptr<Transfers> all_;
  ScriptedAnswer answer_;
  std::optional<DownloadHead> head_;
  DownloadFile file_;
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
