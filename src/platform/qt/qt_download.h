#pragma once
#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <cstdint>
#include <optional>

#include "platform/download_file.h"
#include "platform/http_downloads.h"
#include "platform/qt/qt_network.h"

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
  void begin();
  void take();
  void finished();
  std::optional<DownloadEnd> keep(const QByteArray& bytes);
  void report();
  void end(const DownloadEnd& end);

  QtNetwork& network_;
  DownloadRequest request_;
  HttpDownloads::Handlers handlers_;
  QNetworkReply* reply_ = nullptr;
  DownloadFile file_;
  std::optional<DownloadHead> head_;
  std::int64_t received_ = 0;  // of the final reply's body
  int redirects_ = 0;
  QTimer silence_;
  QElapsedTimer sinceReport_;
};

}  // namespace nimbletype
