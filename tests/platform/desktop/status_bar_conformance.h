#pragma once
#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "platform/desktop/status_bar.h"

// What every `StatusBar` must do on a desktop that has one. Instantiate with a default-constructible harness
// that has
//   StatusBar& bar();
//   void click();        as the user clicks the item
//   void waitFor(const std::string& what, const std::function<bool()>& condition);
namespace nimbletype {

template <typename Harness>
struct StatusBarConformance : testing::Test, Harness {};
TYPED_TEST_SUITE_P(StatusBarConformance);

TYPED_TEST_P(StatusBarConformance, HoldsOneItemThatCanBeClicked) {
  StatusBar& bar = this->bar();
  int first = 0, clicked = 0;
  bar.remove();
  EXPECT_FALSE(bar.place().isHosted);
  bar.onClick([&] { ++first; });
  bar.onClick([&] { ++clicked; });
  for (int round = 1; round <= 2; ++round) {
    bar.show({"pencil.and.scribble", "", "Ready"});
    this->waitFor("the item in the bar", [&] { return bar.place().isHosted; });
    bar.show({"pause.circle.fill", "412", "Paused"});
    bar.setHighlighted(true);
    this->click();
    this->waitFor("word of the click", [&] { return clicked == round; });
    bar.setHighlighted(false);
    bar.remove();
    this->waitFor("the bar without the item", [&] { return !bar.place().isHosted; });
  }
  EXPECT_EQ(first, 0);
}

REGISTER_TYPED_TEST_SUITE_P(StatusBarConformance, HoldsOneItemThatCanBeClicked);

}  // namespace nimbletype
