#pragma once
#include "platform/desktop/screen_reader.h"

namespace nimbletype {

// Pictures of single windows from ScreenCaptureKit, read by Vision on another thread. Needs the user's
// permission to record the screen, which it never asks for.
class MacScreenReader final : public ScreenReader {
 public:
  MacScreenReader();
  bool isPermitted() override;
  [[nodiscard]] Task read(const ScreenWindow& window, Handler done) override;

 private:
  bool isAvailable_ = false;
};

}  // namespace nimbletype
