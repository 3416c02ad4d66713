#pragma once
#include "platform/desktop/screens.h"
#include "platform/drawing/overlay_surface.h"
#include "platform/linux/drawing/x11_overlay_window.h"
#include "platform/qt/drawing/qt_typesetter.h"

namespace nimbletype {

// The port over a window in pixels of the X server. Where the desktop mixes windows it is transparent; where
// not, it covers just its text, in the colour that stands beside the caret.
class X11OverlaySurface final : public OverlaySurface {
 public:
  // `screens` tell from where lists measure; they outlive this.
  explicit X11OverlaySurface(const Screens& screens) : screens_(screens) {}

  void show(const DrawList& list) override;
  void hide() override { window_.hide(); }
  // Whether a compositor runs, so that windows may be partly transparent.
  bool mixesWindows() const { return window_.isTransparent(); }

 private:
  const Screens& screens_;
  QtTypesetter typesetter_;
  X11OverlayWindow window_;
};

}  // namespace nimbletype
