#pragma once
#include <QObject>
#include <QTimer>

#include "platform/network/download_sink.h"
#include "platform/qt/network/qt_network.h"

namespace nimbletype {

// One transfer. Lives on the thread of its network and calls every handler there; after `done` it is of no
// use.
class QtDownload final : public QObject {
 public:
  QtDownload(QtNetwork& network, DownloadRequest request, HttpDownloads::Handlers handlers,
             Milliseconds longestSilence);
  ~QtDownload() override { drop(reply_, *this, Qt::DirectConnection); }

  void start();
  // Ends it with everything that has come in the file. No handler is called any more.
  void stop();

 private:
  void ask(const QUrl& url);
  void follow(const QByteArray& location);
  void hear();
  bool hasBegun();
  void take();
  void finished();
  void end(const DownloadEnd& end);

  QtNetwork& network_;
  DownloadSink sink_;
  QNetworkReply* reply_ = nullptr;
  int redirects_ = 0;
  QTimer silence_;
};

}  // namespace nimbletype
