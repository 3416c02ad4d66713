#include "input/field/pinned_field.h"

#include <gmock/gmock.h>

#include "tests/input/source/field_source_fixture.h"

namespace nimbletype {
namespace {

using std::chrono_literals::operator""ms;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(PinnedField, IsKnownAgainByRoleAndName) {
  const ElementTraits pinned{"AXTextArea", "message", std::nullopt};
  EXPECT_TRUE(isAlike(pinned, {"AXTextArea", "message", "Message"}));
  EXPECT_TRUE(isAlike(pinned, {"AXTextArea", std::nullopt, std::nullopt}));
  EXPECT_FALSE(isAlike(pinned, {"AXTextArea", "search", std::nullopt}));
  EXPECT_FALSE(isAlike(pinned, {"AXTextField", "message", std::nullopt}));
}

class PinnedFieldTest : public FieldSourceFixture {};

TEST_F(PinnedFieldTest, TakesThePlaceOfTheReportedFocus) {
  open(add("AXTextArea", u"pinned"));
  ASSERT_TRUE(source_.pinFocused());
  ax_.focus(editor.processID, add("AXButton"));
  EXPECT_THAT(takeChanges(), testing::Contains(Change::focus));
  EXPECT_EQ(read().before, "pinned");
  source_.unpin();
  EXPECT_EQ(refusal(), "org.editor: focused AXButton isn't a text field");
  EXPECT_FALSE(source_.isPinned());
}

TEST_F(PinnedFieldTest, IsReadAnewWithoutAWordFromTheApplication) {
  const auto field = open(add("AXTextArea", u"pinned"));
  source_.pinFocused();
  takeChanges();
  ax_.at(field).text = u"silent";
  loop_.advance(499ms);
  EXPECT_THAT(takeChanges(), IsEmpty());
  loop_.advance(1ms);
  EXPECT_THAT(takeChanges(), ElementsAre(Change::value));
  addApplication(other);
  workspace_.bringToFront(other);
  takeChanges();
  loop_.advance(5000ms);
  EXPECT_THAT(takeChanges(), IsEmpty()) << "another application is not polled";
  EXPECT_FALSE(source_.isPinned());
  workspace_.bringToFront(editor);
  loop_.advance(500ms);
  EXPECT_EQ(read().before, "silent");
  EXPECT_TRUE(source_.isPinned());
}

TEST_F(PinnedFieldTest, IsFoundAgainAsTheFocusThatIsLikeIt) {
  const auto first = open(add("AXTextArea", u"first"));
  source_.pinFocused();
  ax_.focus(editor.processID, nullptr);
  ax_.remove(first);
  const std::string note = " (pinned box not found: no AXTextArea like it has the focus)";
  EXPECT_EQ(refusal(), "org.editor: nothing focused" + note);
  ax_.focus(editor.processID, add("AXButton"));
  EXPECT_EQ(refusal(), "org.editor: focused AXButton isn't a text field" + note);
  ax_.focus(editor.processID, add("AXTextField", u"another"));
  EXPECT_EQ(read().before, "another") << "the reported focus will do meanwhile";
  ax_.focus(editor.processID, add("AXTextArea", u"second"));
  EXPECT_EQ(read().before, "second");
  ax_.focus(editor.processID, add("AXTextField", u"another"));
  EXPECT_EQ(read().before, "second");
}

TEST_F(PinnedFieldTest, NeedsAnElement) {
  EXPECT_FALSE(source_.pinFocused());
  open(nullptr);
  EXPECT_FALSE(source_.pinFocused());
  EXPECT_FALSE(source_.pin(nullptr));
}

}  // namespace
}  // namespace nimbletype
