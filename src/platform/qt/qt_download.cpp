#include "platform/qt/qt_download.h"

#include <algorithm>
#include <utility>

namespace nimbletype {
namespace {

using enum DownloadEnd::Case;

// What Qt holds of a body while the disk is slower than the network.
constexpr qint64 readAhead = 1 << 20;
constexpr int mostRedirects = 10;
constexpr qint64 reportEveryMs = 200;

bool isRedirect(int status) {
  return status == 301 || status == 302 || status == 303 || status == 307 || status == 308;
}

// Whether the connection was there when it failed.
bool wasConnected(QNetworkReply::NetworkError error) {
  return error == QNetworkReply::RemoteHostClosedError || error == QNetworkReply::ProtocolFailure;
}

}  // namespace

QtDownload::QtDownload(QtNetwork& network, DownloadRequest request, HttpDownloads::Handlers handlers,
                       Milliseconds longestSilence)
    : network_(network), request_(std::move(request)), handlers_(std::move(handlers)) {
  silence_.setSingleShot(true);
  silence_.setInterval(longestSilence);
  connect(&silence_, &QTimer::timeout, this, [this] { end({dropped, "the connection fell silent"}); });
}

void QtDownload::start() {
  const auto url = webAddress(request_.url);
  if (!url) return end({notConnected, "no web address"});
  // Before anything is asked for, so that two transfers into one file never get that far.
  if (const auto opened = file_.open(request_.file); !opened) return end({notWritten, opened.error()});
  ask(*url);
}

void QtDownload::ask(const QUrl& url) {
  reply_ = network_.manager().get(network_.request(url, request_.headers));
  reply_->setReadBufferSize(readAhead);
  connect(reply_, &QNetworkReply::metaDataChanged, this, &QtDownload::hear);
  connect(reply_, &QNetworkReply::readyRead, this, &QtDownload::hear);
  connect(reply_, &QNetworkReply::finished, this, &QtDownload::finished);
  silence_.start();
}

void QtDownload::follow(const QByteArray& location) {
  const QUrl target = reply_->url().resolved(QUrl::fromEncoded(location));
  if (target.scheme() != "https") return end({redirectRefused, target.toString().toStdString()});
  if (++redirects_ > mostRedirects) return end({redirectRefused, "too many redirects"});
  drop(reply_, *this, Qt::QueuedConnection);
  ask(target);
}

void QtDownload::hear() {
  if (hasBegun()) take();
  // Behind the writing, which may take its time.
  if (reply_) silence_.start();
}

// Whether there is a reply whose body is wanted.
bool QtDownload::hasBegun() {
  const int status = statusOf(*reply_);
  if (head_ || status == 0) return head_.has_value();
  const QByteArray location = reply_->rawHeader("Location");
  if (isRedirect(status) && !location.isEmpty())
    follow(location);
  else
    begin();
  return reply_ && head_;
}

void QtDownload::begin() {
  head_ = DownloadHead{statusOf(*reply_), headersOf(*reply_)};
  const auto length = handlers_.place(*head_);
  if (!length) return end({turnedAway, ""});
  if (const auto cut = file_.cutTo(*length); !cut) end({notWritten, cut.error()});
}

void QtDownload::take() {
  const QByteArray bytes = reply_->readAll();
  received_ += bytes.size();
  if (const auto trouble = keep(bytes)) return end(*trouble);
  if (!sinceReport_.isValid() || sinceReport_.elapsed() >= reportEveryMs) report();
}

void QtDownload::finished() {
  if (!hasBegun()) {
    // A redirect is on its way, or it has ended.
    if (!reply_ || !reply_->isFinished()) return;
    return end({wasConnected(reply_->error()) ? dropped : notConnected, reply_->errorString().toStdString()});
  }
  take();
  if (!reply_) return;
  if (hasFailed(*reply_)) return end({dropped, reply_->errorString().toStdString()});
  if (isShort(*reply_, received_)) return end({dropped, "the connection was closed early"});
  end({complete, ""});
}

// Absent while all is well.
std::optional<DownloadEnd> QtDownload::keep(const QByteArray& bytes) {
  const auto room = std::max<std::int64_t>(0, request_.most - file_.size());
  const auto fits = std::min<std::int64_t>(room, bytes.size());
  const auto kept = file_.append({bytes.data(), static_cast<std::size_t>(fits)});
  if (!kept) return DownloadEnd{notWritten, kept.error()};
  if (fits < bytes.size()) return DownloadEnd{tooLong, "the body goes on"};
  return std::nullopt;
}

void QtDownload::report() {
  sinceReport_.start();
  handlers_.progress(file_.size());
}

void QtDownload::end(const DownloadEnd& end) {
  silence_.stop();
  drop(reply_, *this, Qt::QueuedConnection);
  file_.close();
  if (received_ > 0) report();
  handlers_.done(end, head_);
}

void QtDownload::stop() {
  if (reply_ && head_) keep(reply_->readAll());
  silence_.stop();
  drop(reply_, *this, Qt::DirectConnection);
  file_.close();
}

}  // namespace nimbletype
