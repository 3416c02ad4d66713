#pragma once
#include <QObject>

#include "platform/system/main_loop.h"

namespace nimbletype {

// The port over the loop of the thread it is made on, which must be the one that runs the application.
class QtMainLoop final : public MainLoop {
 public:
  void post(std::function<void()> job) override;
  [[nodiscard]] Task after(Milliseconds delay, std::function<void()> job) override;
  MonotonicTime now() const override;
  WallTime wallNow() const override;

 private:
  QObject context_;  // jobs not run yet go with it
};

}  // namespace nimbletype
