#include <gmock/gmock.h>

#include <cmath>
#include <limits>

#include "tests/input/source/field_source_fixture.h"
#include "text/text.h"

namespace nimbletype {
namespace {

using std::chrono_literals::operator""ms;

class MisbehavingApplication : public FieldSourceFixture {};

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();

TEST_F(MisbehavingApplication, NonsenseForABoxIsNoBox) {
  const auto field = open(add("AXTextArea", u"one"));
  ax_.at(field).attributes["AXFrame"] = AttributeValue();
  const std::pair<const char*, TopLeftRect> boxes[] = {{"a zero rectangle", {}},
                                                       {"no height", {10, 10, 8, 0}},
                                                       {"less than no width", {10, 10, -8, 16}},
                                                       {"less than no height", {10, 10, 8, -16}},
                                                       {"no place", {nan, 10, 8, 16}},
                                                       {"no number for a height", {10, 10, 8, nan}},
                                                       {"infinitely far", {10, infinite, 8, 16}}};
  for (const auto& [what, box] : boxes) {
    ax_.at(field).attributes["AXBoundsForRange"] = box;
    EXPECT_EQ(read().caretRect, std::nullopt) << what;
  }
  ax_.at(field).attributes["AXBoundsForRange"] = TopLeftRect{-1500, 40, 8, 16};
  EXPECT_EQ(read().caretRect, (TopLeftRect{-1500, 40, 1, 16})) << "a screen to the left";
}

TEST_F(MisbehavingApplication, RangesBeyondTheTextAreBroughtBack) {
  constexpr std::int64_t far = std::numeric_limits<std::int64_t>::max();
  const struct {
    TextRange told;
    AttributeValue count;
    std::string before;
    std::int64_t length;
  } cases[] = {
      {{-5, 0}, 3.0, "", 0},   {{2, -4}, 3.0, "on", 0},     {{9, 9}, 3.0, "one", 0},
      {{1, far}, 3.0, "o", 2}, {{far, far}, 3.0, "one", 0}, {{2, 0}, 0.0, "on", 0},
      {{2, 0}, nan, "on", 0},  {{2, 0}, -1.0, "on", 0},     {{2, 0}, 1e300, "on", 0},
  };
  const auto field = open(add("AXTextArea", u"one"));
  for (const auto& c : cases) {
    ax_.at(field).attributes = {{"AXRole", std::string("AXTextArea")},
                                {"AXSelectedTextRange", c.told},
                                {"AXNumberOfCharacters", c.count}};
    const FieldSnapshot snapshot = read();
    EXPECT_EQ(snapshot.before, c.before) << c.told.location;
    EXPECT_EQ(snapshot.selectionLength, c.length) << c.told.location;
  }
}

TEST_F(MisbehavingApplication, HalvesOfACharacterAreReplaced) {
  const auto field = open(add("AXTextArea", u"a\xD83Dz😀"));
  EXPECT_EQ(read().before, "a\uFFFDz😀");
  ax_.at(field).selection = {4, 0};
  const FieldSnapshot snapshot = read();
  EXPECT_EQ(snapshot.before, "a\uFFFDz\uFFFD");
  EXPECT_EQ(snapshot.after, "\uFFFD");
}

TEST_F(MisbehavingApplication, AnElementMayVanishAtAnyMoment) {
  open(nullptr);
  for (int survived = 0; survived < 8; ++survived) {
    const auto field = add("AXTextArea", u"one\ntwo");
    ax_.focus(editor.processID, field);
    settle();
    ax_.at(field).hasMarkers = true;
    ax_.at(field).failing = {"AXBoundsForRange"};
    int left = survived;
    ax_.beforeRead = [&](const ObjectRef& element) {
      if (element->same(*field) && left-- == 0) ax_.remove(field);
    };
    const auto snapshot = source_.snapshot();
    ax_.beforeRead = nullptr;
    // Either whole text or none, and always a reason for none.
    EXPECT_EQ(snapshot ? snapshot->before : "one\ntwo", "one\ntwo") << survived;
    EXPECT_NE(snapshot.has_value(), source_.whyNoField().has_value()) << survived;
  }
}

TEST_F(MisbehavingApplication, OfALargeDocumentOnlyTheSurroundingsAreRead) {
  const auto field = open(add("AXTextArea", std::u16string(10'000'000, u'a')));
  ax_.at(field).hasMarkers = true;
  ax_.at(field).selection = {5'000'000, 0};
  ax_.askedTexts.clear();
  EXPECT_EQ(read().before.size(), 3000u);
  std::int64_t units = 0;
  for (const auto& text : ax_.askedTexts) {
    ASSERT_TRUE(std::holds_alternative<TextRange>(text.read.parameter)) << text.read.attribute;
    units += std::get<TextRange>(text.read.parameter).length;
  }
  EXPECT_LE(units, 3600);
}

TEST_F(MisbehavingApplication, ManyFocusChangesLeaveNothingBehind) {
  const ObjectRef fields[] = {add("AXTextArea", u"one"), add("AXTextField", u"two"), add("AXButton")};
  open(fields[0]);
  read();
  const std::size_t listening = ax_.listenerCount();
  for (int i = 0; i < 3000; ++i) {
    ax_.focus(editor.processID, fields[i % 3]);
    settle();
    source_.snapshot();
  }
  ax_.focus(editor.processID, fields[0]);
  settle();
  loop_.advance(Milliseconds(1000));
  EXPECT_EQ(ax_.listenerCount(), listening);
  EXPECT_TRUE(loop_.isIdle());
}

TEST_F(MisbehavingApplication, OurOwnWindowsAreNeverAsked) {
  const RunningApp ours{
      .processID = 44, .bundleID = "org.ours", .appName = "Ours", .bundlePath = "", .isOurs = true};
  addApplication(ours);
  ax_.focus(ours.processID, add("AXTextArea", u"mine"));
  workspace_.bringToFront(ours);
  source_.start();
  loop_.advance(60'000ms);
  EXPECT_EQ(refusal(), "org.ours: nothing focused");
  EXPECT_FALSE(source_.pinFocused());
  source_.insert("x", InsertionMethod::accessibility);
  EXPECT_EQ(ax_.batches, 0);
  EXPECT_EQ(ax_.listenerCount(), 0u);
  EXPECT_TRUE(ax_.written.empty());
}

}  // namespace
}  // namespace nimbletype
