#include "platform/qt/network/qt_http_downloads.h"

#include <QThread>
#include <cstdint>
#include <future>
#include <map>
#include <utility>

#include "platform/qt/network/qt_download.h"

namespace nimbletype {
namespace {

constexpr auto patienceWithDisk = std::chrono::seconds(2);

// Lives on the thread. The network is made there and goes there.
class Worker final : public QObject {
 public:
  using Handlers = HttpDownloads::Handlers;

  void start(std::uint64_t id, const DownloadRequest& request, Handlers handlers,
             Milliseconds longestSilence) {
    if (!network_) network_ = std::make_unique<QtNetwork>();
    handlers.done = [this, id, done = std::move(handlers.done)](const auto& end, const auto& head) {
      done(end, head);
      QMetaObject::invokeMethod(
          this, [this, id] { downloads_.erase(id); }, Qt::QueuedConnection);
    };
    auto& download = downloads_[id];
    download = std::make_unique<QtDownload>(*network_, request, std::move(handlers), longestSilence);
    download->start();
  }

  void stop(std::uint64_t id) {
    if (const auto download = downloads_.extract(id)) download.mapped()->stop();
  }

  void stopAll() {
    for (const auto& [id, download] : downloads_) download->stop();
    downloads_.clear();
    network_.reset();
  }

 private:
  std::unique_ptr<QtNetwork> network_;
  std::map<std::uint64_t, std::unique_ptr<QtDownload>> downloads_;
};

}  // namespace

// The thread as the main thread sees it.
class QtHttpDownloads::Transfers {
 public:
  Transfers() : worker_(new Worker) {
    worker_->moveToThread(&thread_);
    QObject::connect(&thread_, &QThread::finished, worker_, [worker = worker_] {
      worker->stopAll();
      worker->deleteLater();
    });
    thread_.setObjectName("downloads");
    thread_.start();
  }
  ~Transfers() {
    thread_.quit();
    thread_.wait();
  }
  Transfers(const Transfers&) = delete;
  Transfers& operator=(const Transfers&) = delete;

  std::uint64_t start(const DownloadRequest& request, Handlers handlers, Milliseconds longestSilence) {
    const auto id = ++started_;
    post([id, request, handlers = std::move(handlers), longestSilence](Worker& worker) mutable {
      worker.start(id, request, std::move(handlers), longestSilence);
    });
    return id;
  }

  void stop(std::uint64_t id) {
    const auto stopped = std::make_shared<std::promise<void>>();
    post([id, stopped](Worker& worker) {
      worker.stop(id);
      stopped->set_value();
    });
    stopped->get_future().wait_for(patienceWithDisk);
  }

 private:
  template <typename Job>
  void post(Job job) {
    const auto run = [worker = worker_, job = std::move(job)]() mutable { job(*worker); };
    QMetaObject::invokeMethod(worker_, run, Qt::QueuedConnection);
  }

  QThread thread_;
  Worker* worker_;
  std::uint64_t started_ = 0;
};

QtHttpDownloads::QtHttpDownloads(MainLoop& loop, Milliseconds longestSilence)
    : loop_(loop), longestSilence_(longestSilence) {}

QtHttpDownloads::~QtHttpDownloads() = default;

Task QtHttpDownloads::start(const DownloadRequest& request, Handlers handlers) {
  if (!transfers_) transfers_ = std::make_shared<Transfers>();
  auto wanted = std::make_shared<Handlers>(std::move(handlers));
  const auto id = transfers_->start(request, postedTo(loop_, wanted), longestSilence_);
  return Task([wanted, id, transfers = std::weak_ptr(transfers_)]() mutable {
    wanted.reset();
    if (const auto running = transfers.lock()) running->stop(id);
  });
}

}  // namespace nimbletype
