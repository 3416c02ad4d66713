#include "tests/platform/drawing/overlay_conformance.h"
#include "platform/linux/desktop/x11_screens.h"
#include "platform/linux/drawing/x11_overlay_surface.h"
#include "platform/scripted/drawing/recording_overlay_surface.h"
#include "tests/platform/linux/drawing/x11_client.h"

namespace nimbletype {
namespace {

struct RecordingHarness {
  OverlaySurface& surface() { return surface_; }
  bool standsAt(const std::optional<BottomLeftRect>& frame) const {
    return frame ? surface_.shown && surface_.shown->frame == frame : !surface_.shown;
  }
  RecordingOverlaySurface surface_;
};

template <bool mixesWindows>
struct X11Harness {
  X11Harness() { client_.ownSelection("_NET_WM_CM_S0", mixesWindows); }
  OverlaySurface& surface() { return surface_; }
  bool standsAt(const std::optional<BottomLeftRect>& frame) const {
    return client_.soon([&] { return visibleFrame() == frame; });
  }
  std::optional<BottomLeftRect> visibleFrame() const {
    const xcb_window_t overlay = client_.topmost();
    if (overlay == client_.window() || !client_.isMapped(overlay)) return std::nullopt;
    const QRect r = client_.placeOf(overlay);
    return flipped(TopLeftRect(r.x(), r.y(), r.width(), r.height()), screens_.mainHeight());
  }
  X11Client client_{{0, 0, 10, 10}, 0};
  X11Screens screens_;
  X11OverlaySurface surface_{screens_};
};

using Surfaces = testing::Types<RecordingHarness, X11Harness<true>, X11Harness<false>>;
INSTANTIATE_TYPED_TEST_SUITE_P(All, OverlayConformance, Surfaces);

}  // namespace
}  // namespace nimbletype
