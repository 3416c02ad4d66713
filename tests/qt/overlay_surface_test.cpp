#include <QGuiApplication>
#include <QWindow>

#include "platform/qt/qt_overlay_surface.h"
#include "platform/qt/qt_screens.h"
#include "platform/scripted/recording_surface.h"
#include "tests/conformance/overlay_conformance.h"

namespace nimbletype {
namespace {

struct RecordingHarness {
  OverlaySurface& surface() { return surface_; }
  std::optional<BottomLeftRect> visibleFrame() const {
    return surface_.shown ? std::optional(surface_.shown->frame) : std::nullopt;
  }
  RecordingSurface surface_;
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
