#pragma once
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QSslConfiguration>
#include <QUrl>
#include <optional>
#include <string>
#include <vector>

#include "platform/network/http_client.h"

namespace nimbletype {

// What every use of HTTP here agrees on: no cookies, no caches, no redirects of Qt's own, bodies as they
// come, TLS 1.2 at least with the server's name checked, the system's proxies except for this machine itself.
// The certificates in the PEM file that the environment variable SSL_CERT_FILE names are trusted besides the
// system's. Belongs to the thread it is made on.
class QtNetwork {
 public:
  QtNetwork();

  QNetworkAccessManager& manager() { return manager_; }
  QNetworkRequest request(const QUrl& url, const std::vector<HttpHeader>& headers);

 private:
  const QSslConfiguration& tls();

  QNetworkAccessManager manager_;
  std::optional<QSslConfiguration> tls_;  // made when first needed: it reads certificates
};

// Absent for what is no absolute http or https address.
std::optional<QUrl> webAddress(const std::string& url);

// Lets go of a reply, if there is one, and closes its connection unless the exchange is complete. `listener`
// hears nothing more. Queued where one of the reply's own signals may be under way, direct elsewhere.
void drop(QNetworkReply*& reply, const QObject& listener, Qt::ConnectionType when);

// Zero when no reply has begun.
int statusOf(const QNetworkReply& reply);
std::vector<HttpHeader> headersOf(const QNetworkReply& reply);
// Whether the exchange itself failed; a status that tells of an error is none.
bool hasFailed(const QNetworkReply& reply);

}  // namespace nimbletype
