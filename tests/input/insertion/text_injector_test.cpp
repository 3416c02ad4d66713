#include "input/insertion/text_injector.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "platform/scripted/accessibility/scripted_accessibility.h"
#include "platform/scripted/keys/recording_event_poster.h"
#include "platform/scripted/pasteboard/scripted_pasteboard.h"
#include "platform/scripted/system/recording_system_log.h"
#include "platform/scripted/system/virtual_main_loop.h"
#include "text/text.h"

namespace nimbletype {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Line = RecordingSystemLog::Line;

std::string repeated(std::string_view s, int count) {
  std::string result;
  while (count-- > 0) result += s;
  return result;
}

TEST(SplitForTyping, KeepsCharactersWhole) {
  const std::string family = "👨‍👩‍👧‍👦";  // 11 units
  const struct {
    std::string text;
    std::size_t spaces;
    std::vector<std::size_t> chunkUnits;
  } cases[] = {
      {"", 0, {}},
      {"   ", 3, {}},
      {repeated("a", 45), 0, {20, 20, 5}},
      {"  two", 2, {3}},
      {"a  b ", 0, {5}},
      {repeated("a", 20), 0, {20}},
      {repeated("a", 19) + "👍" + "b", 0, {19, 3}},
      {repeated("a", 19) + "e\u0301", 0, {19, 2}},
      {repeated("a", 10) + family, 0, {10, 11}},
      {"a" + family + family, 0, {12, 11}},
      // A character that no chunk can hold is cut, but never inside a surrogate pair.
      {"a" + repeated("👩\u200D", 9) + "👩", 0, {19, 11}},
      {"e" + repeated("\u0301", 24), 0, {20, 5}},
  };
  for (const auto& c : cases) {
    const TypedText typed = splitForTyping(c.text);
    EXPECT_EQ(typed.leadingSpaces, c.spaces) << c.text;
    std::vector<std::size_t> units;
    std::string all(typed.leadingSpaces, ' ');
    for (const std::u16string& chunk : typed.chunks) {
      units.push_back(chunk.size());
      all += text::toUtf8(chunk);
    }
    EXPECT_EQ(units, c.chunkUnits) << c.text;
    EXPECT_EQ(all, c.text);
  }
}

constexpr KeyCombo pasteKeys{key::v, {ModifierSet::command}};
constexpr Milliseconds afterwards{1000};

struct TextInjectorTest : testing::Test {
  TextInjectorTest() {
    ScriptedElement element;
    element.text = u"";
    field = accessibility.addElement(std::move(element));
    pasteboard.copy(theirs);
  }
  InsertionTarget target() const { return {field, false, {}}; }
  std::string fieldText() { return text::toUtf8(*accessibility.at(field).text); }
  // The text of a field that has come to rest, with the caret behind it.
  void put(std::u16string content) {
    const auto end = static_cast<std::int64_t>(content.size());
    loop.advance(afterwards);
    poster.posted.clear();
    pasteboard.lent.clear();
    accessibility.at(field).text = std::move(content);
    accessibility.at(field).selection = {end, 0};
  }

  const ScriptedPasteboard::Items theirs{{{"text", "copied"}, {"html", "<b>copied</b>"}},
                                         {{"image", std::string("\0\x89PNG", 5)}}};
  VirtualMainLoop loop;
  RecordingEventPoster poster;
  ScriptedAccessibility accessibility{loop};
  ScriptedPasteboard pasteboard{loop};
  RecordingSystemLog log;
  TextInjector injector{{poster, accessibility, pasteboard, loop, log}};
  ObjectRef field;
};

TEST_F(TextInjectorTest, TypesSpacesAsKeysAndTheRestAsText) {
  injector.type("  once upon");
  const RecordingEventPoster::Posted space(KeyCombo{key::space, {}});
  EXPECT_THAT(poster.posted, ElementsAre(space, space, RecordingEventPoster::Posted(u"once upon")));
  EXPECT_THAT(log.lines, ElementsAre(Line{"input", "type: 11 units, post access true"}));
}

TEST_F(TextInjectorTest, PostsNothingWithoutAnEventSource) {
  poster.hasSource = false;
  injector.type("text");
  injector.paste("text");
  loop.advance(afterwards);
  EXPECT_THAT(poster.posted, IsEmpty());
  EXPECT_EQ(pasteboard.read(), theirs);
  EXPECT_THAT(log.lines,
              ElementsAre(Line{"input", "type: no event source"}, Line{"input", "type: no event source"}));
}

TEST_F(TextInjectorTest, TakesTheNextWayWhereOneIsClosed) {
  using Way = void (TextInjector::*)(std::string_view, const InsertionTarget&);
  const struct {
    const char* why;
    Way way;
    bool hasElement, accepts, suitsKeys;
    std::string written, typed, pasted;
  } cases[] = {
      {"taken by the element", &TextInjector::write, true, true, true, " more", "", ""},
      {"refused", &TextInjector::write, true, false, true, "", " more", ""},
      {"no element", &TextInjector::write, false, true, true, "", " more", ""},
      {"refused, and no text for keys", &TextInjector::write, true, false, false, "", "", " more"},
      {"a text for keys", &TextInjector::type, true, true, true, "", " more", ""},
      {"no text for keys", &TextInjector::type, true, true, false, " more", "", ""},
      {"no text for keys, refused", &TextInjector::type, true, false, false, "", "", " more"},
      {"no text for keys, no element", &TextInjector::type, false, true, false, "", "", " more"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    put(u"");
    accessibility.at(field).refusesWrites = !c.accepts;
    poster.longestText = c.suitsKeys ? 100 : 0;
    (injector.*c.way)(" more", c.hasElement ? target() : InsertionTarget{});
    loop.advance(Milliseconds(0));
    pasteboard.read();
    EXPECT_EQ(fieldText(), c.written);
    EXPECT_EQ(c.pasted.empty() ? poster.text() : "", c.typed);
    EXPECT_EQ(pasteboard.lent, c.pasted.empty() ? std::vector<std::string>{} : std::vector{c.pasted});
  }
}

TEST_F(TextInjectorTest, LaterTextDoesNotOvertakeKeys) {
  injector.deleteBackwards(3, target());
  injector.write("one", target());
  EXPECT_EQ(fieldText(), "");
  EXPECT_THAT(poster.posted.back(), RecordingEventPoster::Posted(u"one"));
  loop.advance(afterwards);
  injector.write("two", target());
  EXPECT_EQ(fieldText(), "two");

  injector.paste("three", target());
  injector.write("four", target());
  injector.type("five", target());
  loop.advance(Milliseconds(0));
  EXPECT_EQ(fieldText(), "two");
  EXPECT_THAT(pasteboard.lent, ElementsAre("threefourfive"));
}

TEST_F(TextInjectorTest, DeletesOneCharacterAPress) {
  injector.type("teh");
  injector.deleteBackwards(2);
  EXPECT_EQ(poster.text(), "t");
  injector.deleteBackwards();
  injector.deleteBackwards(0);
  EXPECT_EQ(poster.text(), "");
  EXPECT_EQ(poster.posted.size(), 4u);
}

TEST_F(TextInjectorTest, LeavesDeletingToKeysWhereTheSelectionIsInDoubt) {
  put(u"👍🏽ab");
  accessibility.at(field).selection = {4, 2};
  injector.deleteBackwards(1, target());
  EXPECT_EQ(fieldText(), "👍🏽ab");

  EXPECT_EQ(poster.posted.size(), 1u);
  put(u"ab👍🏽");
  accessibility.at(field).attributes["AXSelectedTextRange"] = TextRange{6, 0};
  injector.deleteBackwards(1, target());
  EXPECT_EQ(fieldText(), "ab👍🏽");
  EXPECT_EQ(accessibility.at(field).selection, (TextRange{6, 0}));
  EXPECT_EQ(poster.posted.size(), 1u);
}

TEST_F(TextInjectorTest, DeletesWholeCharactersWhereKeysMayNot) {
  const struct {
    const char* why;
    std::u16string before;
    int count;
    bool accepts;
    std::string left;
    std::size_t presses;
  } cases[] = {
      {"plain letters", u"so teh", 3, true, "so teh", 3},
      {"a family and a flag", u"ab👨‍👩‍👧‍👦🇩🇪", 2, true, "ab", 0},
      {"a letter with its accent", u"caf\u0065\u0301", 1, true, "caf", 0},
      {"an element that refuses", u"ab👨‍👩‍👧‍👦", 1, false, "ab👨‍👩‍👧‍👦", 1},
      {"more than there is", u"👍🏽", 4, true, "", 0},
  };
  for (const auto& c : cases) {
    put(c.before);
    accessibility.at(field).refusesWrites = !c.accepts;
    injector.deleteBackwards(c.count, target());
    EXPECT_EQ(fieldText(), c.left) << c.why;
    EXPECT_EQ(poster.posted.size(), c.presses) << c.why;
  }
}

// --- pasting ---

struct PastingTest : TextInjectorTest {
  void paste(const char* text) {
    injector.paste(text, target());
    loop.advance(Milliseconds(0));
  }
  std::string onBoard() {
    const auto& items = pasteboard.read();
    return items.empty() ? "nothing" : items.front().at("text");
  }
  std::ptrdiff_t pastes() const {
    return std::ranges::count(poster.posted, RecordingEventPoster::Posted(pasteKeys));
  }
};

TEST_F(PastingTest, BringsBackWhatWasThereOnceItIsRead) {
  paste(" more");
  EXPECT_EQ(pastes(), 1);
  EXPECT_EQ(pasteboard.read(), (ScriptedPasteboard::Items{{{"text", " more"}, {"passing", ""}}}));
  loop.advance(Milliseconds(299));
  EXPECT_EQ(onBoard(), " more");
  loop.advance(Milliseconds(1));
  EXPECT_EQ(pasteboard.read(), theirs);

  paste("late");
  loop.advance(Milliseconds(1500));
  EXPECT_EQ(onBoard(), "late") << "for an application that reads late";
  loop.advance(Milliseconds(20));
  EXPECT_EQ(pasteboard.read(), theirs);
  paste("never read");
  loop.advance(Milliseconds(2000));
  EXPECT_EQ(pasteboard.read(), theirs);

  pasteboard.copy({});
  paste("x");
  pasteboard.read();
  loop.advance(Milliseconds(300));
  EXPECT_EQ(onBoard(), "nothing");
  EXPECT_TRUE(loop.isIdle());
}

TEST_F(PastingTest, KeepsWhatTheUserCopiesInBetween) {
  paste("one");
  pasteboard.copy({{{"text", "new"}}});
  loop.advance(afterwards);
  EXPECT_EQ(onBoard(), "new");
  EXPECT_EQ(log.lines.back(), (Line{"input", "paste: something else was copied meanwhile, it stays"}));

  paste("two");
  onBoard();
  pasteboard.copy({{{"text", "newer"}}});
  paste("three");
  EXPECT_EQ(onBoard(), "three");
  loop.advance(afterwards);
  EXPECT_EQ(onBoard(), "newer");
}

TEST_F(PastingTest, SeveralPastesBringBackTheFirstContents) {
  paste("one");
  paste("two");
  paste("three");
  EXPECT_THAT(pasteboard.lent, ElementsAre("one"));
  EXPECT_EQ(onBoard(), "one");
  loop.advance(Milliseconds(20));
  EXPECT_EQ(onBoard(), "twothree");
  EXPECT_EQ(pastes(), 2);
  loop.advance(Milliseconds(200));
  paste("four");
  EXPECT_EQ(onBoard(), "four");
  loop.advance(Milliseconds(300));
  EXPECT_EQ(pasteboard.read(), theirs);
}

TEST_F(PastingTest, WorksWhereNobodyTellsWhoHasRead) {
  pasteboard.tellsReading = false;
  paste("one");
  paste("two");
  EXPECT_THAT(pasteboard.lent, ElementsAre("one"));
  loop.advance(Milliseconds(60));
  EXPECT_THAT(pasteboard.lent, ElementsAre("one", "two"));
  loop.advance(Milliseconds(300));
  EXPECT_EQ(pasteboard.read(), theirs);
}

TEST_F(PastingTest, NeverLosesWhatCannotBeSaved) {
  for (const bool hangs : {true, false}) {
    pasteboard.ownerTakes = Milliseconds(hangs ? 10'000 : 0);
    pasteboard.available = hangs;
    paste(hangs ? "one" : "two");
    loop.advance(afterwards);
    EXPECT_EQ(pasteboard.read(), theirs);
    EXPECT_EQ(poster.text(), "one");
  }
}

TEST_F(PastingTest, PastesOnlyWhereTheTextWasMeantToGo) {
  bool there = true;
  InsertionTarget watched{field, true, [&] { return there; }};
  injector.paste("one", watched);
  there = false;
  loop.advance(afterwards);
  EXPECT_THAT(pasteboard.lent, IsEmpty());
  there = true;
  injector.paste("two", watched);
  loop.advance(Milliseconds(0));
  EXPECT_EQ(onBoard(), "two");
  EXPECT_THAT(poster.posted, ElementsAre(RecordingEventPoster::Posted(
                                 KeyCombo{key::v, {ModifierSet::command | ModifierSet::shift}})));
}

}  // namespace
}  // namespace nimbletype
