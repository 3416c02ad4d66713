#include "platform/linux/accessibility/atspi_scale.h"

#include <gtest/gtest.h>

namespace nimbletype {
namespace {

TEST(AtspiScale, IsARatioThatApplicationsAreScaledBy) {
  struct Case {
    const char* what;
    double pixels, told, scale;
  };
  for (const Case& c : {
           Case{"the same", 760, 760, 1},
           Case{"twice, with a window manager's borders", 1120, 562, 2},
           Case{"one and a half", 900, 600, 1.5},
           Case{"shadows that only the window has", 652, 600, 1},
           Case{"borders that only the application counts", 760, 764, 1},
           Case{"smaller than told", 380, 760, 1},
           Case{"nothing told", 760, 0, 1},
       })
    EXPECT_EQ(applicationScale(c.pixels, c.told), c.scale) << c.what;
}

}  // namespace
}  // namespace nimbletype
