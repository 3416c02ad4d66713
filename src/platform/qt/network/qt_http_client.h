#pragma once
#include <QObject>

#include "platform/network/http_client.h"
#include "platform/qt/network/qt_network.h"

namespace nimbletype {

// The port over Qt. Connections are kept for further requests to the same server. See `QtNetwork` for proxies
// and trust.
class QtHttpClient final : public HttpClient {
 public:
  [[nodiscard]] Task send(const HttpRequest& request, Handler done) override;

 private:
  QtNetwork network_;
  QObject exchanges_;  // owns those under way
};

}  // namespace nimbletype
