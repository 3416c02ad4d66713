#pragma once
#include "platform/system/background_work.h"

namespace nimbletype {

// Work of the utility class: the system runs it when nothing more urgent needs the processor.
class MacBackgroundWork final : public BackgroundWork {
 public:
  [[nodiscard]] Task run(std::function<void(const std::atomic<bool>& cancelled)> work,
                         std::function<void()> done) override;
};

}  // namespace nimbletype
