#pragma once
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/keys/event_poster.h"
#include "text/text.h"

// What every `EventPoster` must do. Instantiate with a default-constructible harness that has
//   EventPoster& poster();
//   EventPoster& sourceless();           // one that the desktop gives no event source
//   std::string text();                  // what the application holds once all posted has arrived
//   std::vector<KeyCombo> keys();        // the keys it got since this was last asked
//   void hold(ModifierSet modifiers);    // the user does
namespace nimbletype {

template <typename Harness>
class EventPosterConformance : public testing::Test {
 protected:
  EventPoster& poster() { return harness_.poster(); }

  Harness harness_;
};

TYPED_TEST_SUITE_P(EventPosterConformance);

TYPED_TEST_P(EventPosterConformance, TextArrivesAsItIsAndInOrder) {
  ASSERT_TRUE(this->poster().mayPost());
  for (const char16_t* chunk :
       {u"Hello, World! (42%) ", u"na\u00efve \u201cquoted\u201d ", u"\U0001F44D\U0001F3FD", u"ab"}) {
    ASSERT_TRUE(this->poster().begin());
    EXPECT_TRUE(this->poster().suits(u"ab"));
    this->poster().type(chunk);
    this->poster().press(key::space, {});
    this->poster().press(key::deleteBack, {});
    this->poster().end();
  }
  EXPECT_EQ(this->harness_.text(), "Hello, World! (42%) naïve “quoted” 👍🏽ab");
}

TYPED_TEST_P(EventPosterConformance, KeysComeWithTheirModifiersWhateverTheUserHolds) {
  this->harness_.hold({ModifierSet::option});
  this->harness_.keys();
  const KeyCombo all[] = {
      {key::leftArrow, {ModifierSet::shift}}, {key::deleteBack, {}}, {key::v, {ModifierSet::control}}};
  ASSERT_TRUE(this->poster().begin());
  for (const KeyCombo& combo : all) this->poster().press(combo.keyCode, combo.modifiers);
  this->poster().end();
  EXPECT_THAT(this->harness_.keys(), testing::ElementsAreArray(all));
}

TYPED_TEST_P(EventPosterConformance, SaysWhenThereIsNoEventSource) {
  EXPECT_FALSE(this->harness_.sourceless().begin());
}

REGISTER_TYPED_TEST_SUITE_P(EventPosterConformance, TextArrivesAsItIsAndInOrder,
                            KeysComeWithTheirModifiersWhateverTheUserHolds, SaysWhenThereIsNoEventSource);

}  // namespace nimbletype
