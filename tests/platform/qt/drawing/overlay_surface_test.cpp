#include <QGuiApplication>
#include <QWindow>

#include "platform/qt/desktop/qt_screens.h"
#include "platform/qt/drawing/qt_overlay_surface.h"
#include "platform/scripted/drawing/recording_overlay_surface.h"
#include "tests/platform/drawing/overlay_conformance.h"

namespace nimbletype {
namespace {

struct RecordingHarness {
  OverlaySurface& surface() { return surface_; }
  std::optional<BottomLeftRect> visibleFrame() const {
    return surface_.shown ? std::optional(surface_.shown->frame) : std::nullopt;
  }
  RecordingOverlaySurface surface_;
};

template <bool mixesWindows>
struct QtHarness {
  OverlaySurface& surface() { return surface_; }
  static std::optional<BottomLeftRect> visibleFrame() {
    for (const QWindow* window : QGuiApplication::allWindows()) {
      if (!window->isVisible()) continue;
      const QRect r = window->geometry();
      return flipped(TopLeftRect(r.x(), r.y(), r.width(), r.height()), QtScreens().mainHeight());
    }
    return std::nullopt;
  }
  QtOverlaySurface surface_{{[] { return mixesWindows; }, {}, {}}};
};

using Surfaces = testing::Types<RecordingHarness, QtHarness<true>, QtHarness<false>>;
INSTANTIATE_TYPED_TEST_SUITE_P(All, OverlayConformance, Surfaces);

}  // namespace
}  // namespace nimbletype
