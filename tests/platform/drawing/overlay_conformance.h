#pragma once
#include <gtest/gtest.h>

#include <optional>

#include "platform/drawing/overlay_surface.h"

// What every `OverlaySurface` must do. Instantiate with a default-constructible harness that has
//   OverlaySurface& surface();
//   std::optional<BottomLeftRect> visibleFrame();  // where the surface stands on screen; none while hidden
namespace nimbletype {

template <typename Harness>
class OverlayConformance : public testing::Test {
 protected:
  static DrawList listAt(const BottomLeftRect& frame) {
    const BoxDraw box{{0, 0, frame.width, frame.height}, 4, {0.5, 0.5, 0.5, 0.2}};
    const TextDraw text{"naïve 👍", {.name = "", .size = 13}, {0.5, 0.5, 0.5, 0.9}, 2, 4};
    return {frame, {box, text}};
  }

  Harness harness_;
};

TYPED_TEST_SUITE_P(OverlayConformance);

TYPED_TEST_P(OverlayConformance, IsWhereTheLastListSaysUntilHidden) {
  auto& surface = this->harness_.surface();
  const BottomLeftRect first{100, 300, 80, 18}, second{40, 200, 300, 60};
  EXPECT_EQ(this->harness_.visibleFrame(), std::nullopt);
  surface.hide();  // nothing to hide
  surface.show(this->listAt(first));
  EXPECT_EQ(this->harness_.visibleFrame(), first);
  surface.show(this->listAt(second));
  EXPECT_EQ(this->harness_.visibleFrame(), second);
  surface.hide();
  EXPECT_EQ(this->harness_.visibleFrame(), std::nullopt);
  surface.hide();
  surface.show(this->listAt(first));
  EXPECT_EQ(this->harness_.visibleFrame(), first);
}

REGISTER_TYPED_TEST_SUITE_P(OverlayConformance, IsWhereTheLastListSaysUntilHidden);

}  // namespace nimbletype
