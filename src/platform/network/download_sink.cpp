#include "platform/network/download_sink.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace nimbletype {
namespace {

using enum DownloadEnd::Case;

std::optional<std::int64_t> announcedLength(const DownloadHead& head) {
  const auto text = headerValue(head.headers, "Content-Length");
  std::int64_t length = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), length);
  return error == std::errc() ? std::optional(length) : std::nullopt;
}

}  // namespace

DownloadSink::DownloadSink(DownloadRequest request, HttpDownloads::Handlers handlers,
                           Milliseconds reportEvery)
    : request_(std::move(request)), handlers_(std::move(handlers)), reportEvery_(reportEvery) {}

DownloadSink::Trouble DownloadSink::open() {
  const auto opened = file_.open(request_.file);
  return opened ? Trouble() : DownloadEnd{notWritten, opened.error()};
}

DownloadSink::Trouble DownloadSink::begin(DownloadHead head) {
  head_ = std::move(head);
  const auto length = handlers_.place(*head_);
  if (!length) return DownloadEnd{turnedAway, "the reply was not wanted"};
  const auto cut = file_.cutTo(*length);
  return cut ? Trouble() : DownloadEnd{notWritten, cut.error()};
}

DownloadSink::Trouble DownloadSink::take(std::string_view bytes) {
  const auto arrived = static_cast<std::int64_t>(bytes.size());
  const auto room = std::clamp<std::int64_t>(request_.most - file_.size(), 0, arrived);
  const auto kept = file_.append(bytes.substr(0, static_cast<std::size_t>(room)));
  received_ += arrived;
  if (!kept) return DownloadEnd{notWritten, kept.error()};
  if (room < arrived) return DownloadEnd{tooLong, "the body goes on"};
  if (arrived > 0 && std::chrono::steady_clock::now() - lastReport_ >= reportEvery_) report();
  return {};
}

DownloadEnd DownloadSink::whole() const {
  const auto announced = announcedLength(*head_);
  if (announced && received_ < *announced) return {dropped, "the connection was closed early"};
  return {complete, ""};
}

void DownloadSink::end(const DownloadEnd& end) {
  close();
  if (received_ > 0) report();
  handlers_.done(end, head_);
}

void DownloadSink::report() {
  lastReport_ = std::chrono::steady_clock::now();
  handlers_.progress(file_.size());
}

HttpDownloads::Handlers postedTo(MainLoop& loop, const std::shared_ptr<HttpDownloads::Handlers>& wanted) {
  const std::weak_ptr<HttpDownloads::Handlers> listener = wanted;
  const auto progress = [&loop, listener](std::int64_t size) {
    loop.post([listener, size] {
      if (const auto alive = listener.lock()) alive->progress(size);
    });
  };
  const auto done = [&loop, listener](const DownloadEnd& end, const std::optional<DownloadHead>& head) {
    loop.post([listener, end, head] {
      if (const auto alive = listener.lock()) alive->done(end, head);
    });
  };
  return {wanted->place, progress, done};
}

}  // namespace nimbletype
