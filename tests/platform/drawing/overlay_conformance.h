#pragma once
#include <gtest/gtest.h>

#include <optional>

#include "platform/drawing/overlay_surface.h"

// What every `OverlaySurface` must do. Instantiate with a default-constructible harness that has
//   OverlaySurface& surface();
//   bool standsAt(const std::optional<BottomLeftRect>&);  // on screen, as soon as may be; none: it is hidden
namespace nimbletype {

template <typename Harness>
struct OverlayConformance : testing::Test, Harness {};
TYPED_TEST_SUITE_P(OverlayConformance);

TYPED_TEST_P(OverlayConformance, IsWhereTheLastListSaysUntilHidden) {
  const BottomLeftRect first{100, 300, 80, 18}, second{40, 200, 300, 60};
  EXPECT_TRUE(this->standsAt(std::nullopt));
  this->surface().hide();  // nothing to hide
  for (const auto& frame : std::vector<std::optional<BottomLeftRect>>{first, second, {}, {}, first}) {
    const BottomLeftRect size = frame.value_or(BottomLeftRect());
    const BoxDraw box{{0, 0, size.width, size.height}, 4, {0.5, 0.5, 0.5, 0.2}};
    const TextDraw text{"naïve 👍", {.name = "", .size = 13}, {0.5, 0.5, 0.5, 0.9}, 2, 4};
    frame ? this->surface().show({*frame, {box, text}}) : this->surface().hide();
    EXPECT_TRUE(this->standsAt(frame)) << size.x;
  }
}

REGISTER_TYPED_TEST_SUITE_P(OverlayConformance, IsWhereTheLastListSaysUntilHidden);

}  // namespace nimbletype
