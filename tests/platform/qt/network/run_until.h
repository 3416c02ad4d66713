#pragma once
#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>
#include <functional>

namespace nimbletype {

// Lets the application's loop run until the condition holds, which is looked at every few milliseconds; false
// when it gave up.
inline bool runUntil(const std::function<bool()>& condition) {
  const QDeadlineTimer patience(20'000);
  QTimer glance;
  glance.start(5);
  while (!condition() && !patience.hasExpired()) {
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  return condition();
}

}  // namespace nimbletype
