#include "platform/qt/network/qt_http_client.h"

#include <QCoreApplication>
#include <QPointer>
#include <QTimer>
#include <utility>

namespace nimbletype {
namespace {

using Result = std::expected<HttpReply, HttpFailure>;
using enum HttpFailure::Case;

// What Qt holds of a body that has not been taken; a server is slowed down rather than believed.
constexpr qint64 readAhead = 1 << 20;

HttpFailure::Case reasonFor(QNetworkReply::NetworkError error, bool begun) {
  switch (error) {
    case QNetworkReply::SslHandshakeFailedError:
      return notTrusted;
    case QNetworkReply::ProtocolUnknownError:
    case QNetworkReply::ProtocolInvalidOperationError:
      return badAddress;
    case QNetworkReply::TimeoutError:
      return timedOut;
    case QNetworkReply::RemoteHostClosedError:
    case QNetworkReply::ProtocolFailure:
      return dropped;
    default:
      return begun ? dropped : notConnected;
  }
}

// Whether less has come than the head announced.
bool isShort(const QNetworkReply& reply, std::size_t received) {
  const auto announced = reply.header(QNetworkRequest::ContentLengthHeader);
  return reply.operation() != QNetworkAccessManager::HeadOperation && announced.isValid() &&
         received < announced.toULongLong();
}

// One request and what becomes of it. Deletes itself when that has been told.
class Exchange final : public QObject {
 public:
  Exchange(QObject* owner, HttpClient::Handler done) : QObject(owner), done_(std::move(done)) {}
  ~Exchange() override { drop(reply_, *this, Qt::DirectConnection); }

  void start(QtNetwork& network, const HttpRequest& request);

 private:
  void watch();
  void take();
  void finished();
  void settle(Result result);
  void deliver();

  HttpClient::Handler done_;
  QNetworkReply* reply_ = nullptr;
  std::string body_;
  Result result_;
  QTimer deadline_;
};

QNetworkReply* sent(QtNetwork& network, const QUrl& url, const HttpRequest& request) {
  const auto wire = network.request(url, request.headers);
  if (request.method == "GET") return network.manager().get(wire);
  if (request.method == "HEAD") return network.manager().head(wire);
  return network.manager().sendCustomRequest(wire, QByteArray::fromStdString(request.method),
                                             QByteArray::fromStdString(request.body));
}

void Exchange::start(QtNetwork& network, const HttpRequest& request) {
  const auto url = webAddress(request.url);
  if (!url) return settle(std::unexpected(HttpFailure{badAddress, request.url}));
  reply_ = sent(network, *url, request);
  reply_->setReadBufferSize(readAhead);
  watch();
  deadline_.setSingleShot(true);
  deadline_.setTimerType(Qt::PreciseTimer);
  deadline_.start(request.timeout);
}

void Exchange::watch() {
  connect(reply_, &QNetworkReply::readyRead, this, &Exchange::take);
  connect(reply_, &QNetworkReply::finished, this, &Exchange::finished);
  connect(&deadline_, &QTimer::timeout, this, [this] {
    settle(std::unexpected(HttpFailure{timedOut, "no answer in time"}));
  });
}

void Exchange::take() {
  const QByteArray bytes = reply_->readAll();
  if (body_.size() + static_cast<std::size_t>(bytes.size()) > HttpClient::longestBody)
    return settle(std::unexpected(HttpFailure{tooLarge, "the reply has no end"}));
  body_.append(bytes.data(), static_cast<std::size_t>(bytes.size()));
}

void Exchange::finished() {
  take();
  if (!reply_) return;
  const auto error = reply_->error();
  const int status = statusOf(*reply_);
  if (hasFailed(*reply_))
    return settle(
        std::unexpected(HttpFailure{reasonFor(error, status > 0), reply_->errorString().toStdString()}));
  if (isShort(*reply_, body_.size()))
    return settle(std::unexpected(HttpFailure{dropped, "the reply was cut off"}));
  settle(HttpReply{status, headersOf(*reply_), std::move(body_)});
}

// Told in a turn of its own: whoever hears it may destroy everything here.
void Exchange::settle(Result result) {
  deadline_.stop();
  drop(reply_, *this, Qt::QueuedConnection);
  result_ = std::move(result);
  const auto tell = [self = QPointer<Exchange>(this)] {
    if (self) self->deliver();
  };
  QMetaObject::invokeMethod(qApp, tell, Qt::QueuedConnection);
}

void Exchange::deliver() {
  const auto done = std::move(done_);
  auto result = std::move(result_);
  delete this;
  done(std::move(result));
}

}  // namespace

Task QtHttpClient::send(const HttpRequest& request, Handler done) {
  auto* exchange = new Exchange(&exchanges_, std::move(done));
  exchange->start(network_, request);
  return Task([exchange = QPointer<Exchange>(exchange)] { delete exchange; });
}

}  // namespace nimbletype
