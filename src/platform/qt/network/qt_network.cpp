#include "platform/qt/network/qt_network.h"

#include <QFile>
#include <QHostAddress>
#include <QNetworkProxyFactory>
#include <QSslCertificate>
#include <utility>

namespace nimbletype {
namespace {

bool isThisMachine(const QString& host) {
  return host == "localhost" || host.endsWith(".localhost") || QHostAddress(host).isLoopback();
}

class Proxies final : public QNetworkProxyFactory {
 public:
  QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery& query) override {
    if (isThisMachine(query.peerHostName())) return {QNetworkProxy(QNetworkProxy::NoProxy)};
    return systemProxyForQuery(query);
  }
};

QSslConfiguration makeTls() {
  auto tls = QSslConfiguration::defaultConfiguration();
  tls.setProtocol(QSsl::TlsV1_2OrLater);
  tls.setPeerVerifyMode(QSslSocket::VerifyPeer);
  const QString extra = QFile::decodeName(qgetenv("SSL_CERT_FILE"));
  if (!extra.isEmpty())
    tls.setCaCertificates(QSslConfiguration::systemCaCertificates() + QSslCertificate::fromPath(extra));
  return tls;
}

// Whether the error says no more than the reply's status does.
bool isAboutStatus(QNetworkReply::NetworkError error) {
  return error == QNetworkReply::ProtocolInvalidOperationError ||
         error == QNetworkReply::ProxyAuthenticationRequiredError ||
         (error >= QNetworkReply::ContentAccessDenied && error <= QNetworkReply::UnknownContentError) ||
         (error >= QNetworkReply::InternalServerError && error <= QNetworkReply::UnknownServerError);
}

}  // namespace

QtNetwork::QtNetwork() {
  manager_.setProxyFactory(new Proxies);  // the manager's own now
}

const QSslConfiguration& QtNetwork::tls() {
  if (!tls_) tls_ = makeTls();
  return *tls_;
}

QNetworkRequest QtNetwork::request(const QUrl& url, const std::vector<HttpHeader>& headers) {
  QNetworkRequest request(url);
  if (url.scheme() == "https") request.setSslConfiguration(tls());
  using R = QNetworkRequest;
  request.setAttribute(R::RedirectPolicyAttribute, R::ManualRedirectPolicy);
  request.setAttribute(R::CookieLoadControlAttribute, R::Manual);
  request.setAttribute(R::CookieSaveControlAttribute, R::Manual);
  request.setAttribute(R::AuthenticationReuseAttribute, R::Manual);
  // A connection carries one exchange at a time, so that closing it ends just that.
  request.setAttribute(R::Http2AllowedAttribute, false);
  request.setRawHeader("User-Agent", "Nimbletype");
  request.setRawHeader("Accept-Encoding", "identity");
  request.setRawHeader("Accept-Language", "*");  // Qt would tell the user's
  for (const HttpHeader& header : headers)
    request.setRawHeader(QByteArray::fromStdString(header.name), QByteArray::fromStdString(header.value));
  return request;
}

std::optional<QUrl> webAddress(const std::string& url) {
  const QUrl address(QString::fromStdString(url));
  const bool web = address.scheme() == "http" || address.scheme() == "https";
  return address.isValid() && web && !address.host().isEmpty() ? std::optional(address) : std::nullopt;
}

void drop(QNetworkReply*& reply, const QObject& listener, Qt::ConnectionType when) {
  auto* dropped = std::exchange(reply, nullptr);
  if (!dropped) return;
  dropped->disconnect(&listener);
  QMetaObject::invokeMethod(dropped, &QNetworkReply::abort, when);
  dropped->deleteLater();
}

int statusOf(const QNetworkReply& reply) {
  return reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

std::vector<HttpHeader> headersOf(const QNetworkReply& reply) {
  std::vector<HttpHeader> headers;
  for (const auto& [name, value] : reply.rawHeaderPairs())
    headers.push_back({name.toStdString(), value.toStdString()});
  return headers;
}

bool hasFailed(const QNetworkReply& reply) {
  const auto error = reply.error();
  return error != QNetworkReply::NoError && !(statusOf(reply) >= 400 && isAboutStatus(error));
}

}  // namespace nimbletype
