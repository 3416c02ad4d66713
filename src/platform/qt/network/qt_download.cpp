#include "platform/qt/network/qt_download.h"

#include <utility>

namespace nimbletype {
namespace {

using enum DownloadEnd::Case;

// What Qt holds of a body while the disk is slower than the network.
constexpr qint64 readAhead = 1 << 20;
constexpr int mostRedirects = 10;

bool isRedirect(int status) {
  return status == 301 || status == 302 || status == 303 || status == 307 || status == 308;
}

// Whether the connection was there when it failed.
bool wasConnected(QNetworkReply::NetworkError error) {
  return error == QNetworkReply::RemoteHostClosedError || error == QNetworkReply::ProtocolFailure;
}

std::string_view viewOf(const QByteArray& bytes) {
  return {bytes.data(), static_cast<std::size_t>(bytes.size())};
}

}  // namespace

QtDownload::QtDownload(QtNetwork& network, DownloadRequest request, HttpDownloads::Handlers handlers,
                       Milliseconds longestSilence)
    : network_(network), sink_(std::move(request), std::move(handlers)) {
  silence_.setSingleShot(true);
  silence_.setInterval(longestSilence);
  connect(&silence_, &QTimer::timeout, this, [this] { end({dropped, "the connection fell silent"}); });
}

void QtDownload::start() {
  const auto url = webAddress(sink_.request().url);
  if (!url) return end({notConnected, "no web address"});
  if (const auto trouble = sink_.open()) return end(*trouble);
  ask(*url);
}

void QtDownload::ask(const QUrl& url) {
  reply_ = network_.manager().get(network_.request(url, sink_.request().headers));
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
  if (sink_.hasBegun() || status == 0) return sink_.hasBegun();
  const QByteArray location = reply_->rawHeader("Location");
  if (isRedirect(status) && !location.isEmpty()) {
    follow(location);
    return false;
  }
  const auto trouble = sink_.begin({status, headersOf(*reply_)});
  if (trouble) end(*trouble);
  return !trouble;
}

void QtDownload::take() {
  if (const auto trouble = sink_.take(viewOf(reply_->readAll()))) end(*trouble);
}

void QtDownload::finished() {
  if (!hasBegun()) {
    // A redirect is on its way, or it has ended.
    if (!reply_ || !reply_->isFinished()) return;
    const auto reason = wasConnected(reply_->error()) ? dropped : notConnected;
    return end({reason, reply_->errorString().toStdString()});
  }
  take();
  if (!reply_) return;
  end(hasFailed(*reply_) ? DownloadEnd{dropped, reply_->errorString().toStdString()} : sink_.whole());
}

void QtDownload::end(const DownloadEnd& end) {
  silence_.stop();
  drop(reply_, *this, Qt::QueuedConnection);
  sink_.end(end);
}

void QtDownload::stop() {
  silence_.stop();
  if (reply_ && sink_.hasBegun()) sink_.take(viewOf(reply_->readAll()));
  drop(reply_, *this, Qt::DirectConnection);
  sink_.close();
}

}  // namespace nimbletype
