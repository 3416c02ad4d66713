#pragma once
#import <AppKit/AppKit.h>

#include "platform/drawing/overlay_surface.h"

namespace nimbletype {

// The port over a panel that never becomes key or main and lets the pointer through, on every space and over
// full-screen applications.
class MacOverlaySurface final : public OverlaySurface {
 public:
  MacOverlaySurface();
  ~MacOverlaySurface() override;
  MacOverlaySurface(const MacOverlaySurface&) = delete;
  MacOverlaySurface& operator=(const MacOverlaySurface&) = delete;

  void show(const DrawList& list) override;
  void hide() override;

 private:
  NSPanel* panel_;
};

}  // namespace nimbletype
