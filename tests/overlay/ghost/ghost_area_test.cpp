#include "overlay/ghost/ghost_area.h"

#include <gtest/gtest.h>

namespace nimbletype {
namespace {

// A main screen with a Dock below and a menu bar above, one to its left that reaches lower, one above.
const std::vector<Screen> screens{{{0, 0, 1440, 900}, {0, 70, 1440, 805}},
                                  {{-1000, -200, 1000, 800}, {-1000, -200, 1000, 800}},
                                  {{0, 900, 1440, 900}, {0, 900, 1440, 875}}};

TEST(GhostArea, IsTheVisibleFrameStretchedWhereTheFieldReachesOut) {
  struct Case {
    const char* what;
    BottomLeftRect caret;
    std::optional<BottomLeftRect> field;
    bool anchored;
    GhostArea expected;
  };
  const Case cases[] = {
      {"inside the visible frame", {100, 400, 1, 16}, {{50, 100, 500, 500}}, false, {{0, 70, 1440, 805}, 0}},
      {"no field", {100, 400, 1, 16}, {}, false, {{0, 70, 1440, 805}, 0}},
      {"field into the Dock strip", {100, 400, 1, 16}, {{50, 40, 500, 500}}, false, {{0, 0, 1440, 875}, 0}},
      {"caret in the Dock strip", {100, 60, 1, 16}, {}, false, {{0, 0, 1440, 875}, 0}},
      {"field into the menu bar", {100, 400, 1, 16}, {{50, 100, 500, 790}}, false, {{0, 70, 1440, 830}, 0}},
      {"full-screen field", {100, 400, 1, 16}, {{0, 0, 1440, 900}}, false, {{0, 0, 1440, 900}, 0}},
      {"anchored ignores the field", {100, 400, 1, 16}, {{0, 0, 1440, 900}}, true, {{0, 70, 1440, 805}, 0}},
      {"left screen", {-500, -100, 1, 16}, {{-900, -150, 600, 400}}, false, {{-1000, -200, 1000, 800}, -200}},
      {"upper screen", {0, 900, 1, 16}, {}, false, {{0, 900, 1440, 875}, 900}},
      {"no screen", {3000, 400, 1, 16}, {{2900, 300, 500, 500}}, false, {}}};
  for (const Case& c : cases) {
    GhostContent content;
    content.caretRect = c.caret;
    content.fieldFrame = c.field;
    content.anchored = c.anchored;
    EXPECT_EQ(ghostArea(content, screens), c.expected) << c.what;
  }
}

}  // namespace
}  // namespace nimbletype
