#pragma once
#include "platform/system/background_work.h"
#include "platform/system/main_loop.h"

namespace nimbletype {

// Each piece of work on a thread of its own that yields to the rest of the desktop. The loop must outlive
// the work.
class LinuxBackgroundWork final : public BackgroundWork {
 public:
  explicit LinuxBackgroundWork(MainLoop& loop) : loop_(loop) {}

  [[nodiscard]] Task run(std::function<void(const std::atomic<bool>& cancelled)> work,
                         std::function<void()> done) override;

 private:
  MainLoop& loop_;
};

}  // namespace nimbletype
