#include "platform/qt/system/qt_main_loop.h"

#include <QPointer>
#include <QTimer>

namespace nimbletype {

void QtMainLoop::post(std::function<void()> job) {
  QMetaObject::invokeMethod(&context_, std::move(job), Qt::QueuedConnection);
}

Task QtMainLoop::after(Milliseconds delay, std::function<void()> job) {
  auto* timer = new QTimer(&context_);
  timer->setSingleShot(true);
  timer->setTimerType(Qt::PreciseTimer);
  // The job may drop its own task, so the timer outlives the call in every case.
  QObject::connect(timer, &QTimer::timeout, &context_, [timer, job = std::move(job)] {
    timer->deleteLater();
    job();
  });
  timer->start(delay);
  return Task([timer = QPointer<QTimer>(timer)] {
    if (!timer) return;
    timer->stop();
    timer->deleteLater();
  });
}

MonotonicTime QtMainLoop::now() const {
  return std::chrono::steady_clock::now();
}

WallTime QtMainLoop::wallNow() const {
  return std::chrono::time_point_cast<Milliseconds>(std::chrono::system_clock::now());
}

}  // namespace nimbletype
