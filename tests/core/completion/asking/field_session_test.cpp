#include "core/completion/asking/field_session.h"

#include <gtest/gtest.h>

namespace nimbletype {
namespace {

// Fields are seen one after another; what was told is "key: text", with a star where something was accepted.
struct Follower {
  Follower() {
    session.onLeft([this](const LeftField& field) {
      told.push_back(field.ruleKey + ": " + field.text() + (field.acceptedSomething ? "*" : ""));
    });
  }
  Follower& see(const std::string& key, const std::string& before, int selected = 0) {
    FieldSnapshot snapshot;
    snapshot.fieldKey = snapshot.bundleID = key;
    snapshot.before = before;
    snapshot.selectionLength = selected;
    session.seen(snapshot);
    return *this;
  }
  Follower& accept() { return session.accepted(), *this; }
  Follower& leave() { return session.leave(), *this; }

  FieldSession session;
  std::vector<std::string> told;
};

using Told = std::vector<std::string>;

TEST(FieldSession, TellsWhatTheFieldHeldWhenItIsLeft) {
  Follower f;
  f.accept();  // nowhere yet
  f.see("a", "Dear").see("a", "Dear Ann").accept().see("b", "").see("b", "hi");
  EXPECT_EQ(f.told, (Told{"app:a: Dear Ann*"}));
  f.leave().leave();
  EXPECT_EQ(f.told, (Told{"app:a: Dear Ann*", "app:b: hi"}));
}

TEST(FieldSession, TakesTextThatGoesAllAtOnceForSent) {
  Follower f;
  f.see("a", "On my way").accept().see("a", "").see("a", "Yes").see("a", "\n");
  EXPECT_EQ(f.told, (Told{"app:a: On my way*", "app:a: Yes"}));
}

TEST(FieldSession, TextThatIsSelectedFirstWasThrownAway) {
  Follower f;
  f.see("a", "Never mind").accept().see("a", "", 10).see("a", "").leave();
  EXPECT_EQ(f.told, (Told{"app:a: *"}));
  Follower kept;
  kept.see("a", "As it is").see("a", "", 8).leave();
  EXPECT_EQ(kept.told, (Told{"app:a: As it is"}));
}

TEST(FieldSession, GoesOnWhenTheFieldWasLostForAMoment) {
  Follower f;
  f.see("a", "Half a").accept().leave().see("a", "Half a").leave();
  EXPECT_EQ(f.told, (Told{"app:a: Half a*"}));
  f.see("a", "Half a sentence").leave();
  EXPECT_EQ(f.told.back(), "app:a: Half a sentence*");
}

TEST(FieldSession, TellsNothingOfSecretsAndWhereTheUserIs) {
  FieldSession session;
  std::vector<LeftField> left;
  session.onLeft([&left](const LeftField& field) { left.push_back(field); });
  session.askTerminal([] { return true; });
  FieldSnapshot snapshot;
  snapshot.fieldKey = "a";
  snapshot.domain = "example.com";
  snapshot.windowTitle = "Mail - Private Browsing";
  snapshot.isSecure = true;
  session.seen(snapshot);
  snapshot.isSecure = false;  // the page shows the password
  snapshot.before = "hunter2";
  session.seen(snapshot);
  session.leave();
  ASSERT_EQ(left.size(), 1U);
  EXPECT_EQ(left[0].text(), "");
  EXPECT_EQ(left[0].ruleKey, "web:example.com");
  EXPECT_TRUE(left[0].isTerminal && left[0].isPrivateWindow);

  snapshot.fieldKey = "b";
  session.seen(snapshot);
  snapshot.isSecure = true;  // hidden again
  session.seen(snapshot);
  session.leave();
  ASSERT_EQ(left.size(), 2U);
  EXPECT_EQ(left[1].text(), "");
}

}  // namespace
}  // namespace nimbletype
