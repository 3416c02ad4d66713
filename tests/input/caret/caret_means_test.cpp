#include <algorithm>

#include "tests/input/source/field_source_fixture.h"

namespace nimbletype {
namespace {

// By which means the caret is found in fields that misbehave, and what the log says of it.
class CaretMeans : public FieldSourceFixture {
 protected:
  ScriptedElement& openWithMarkers(std::u16string text) {
    const auto field = open(add("AXTextArea", std::move(text)));
    ScriptedElement& element = ax_.at(field);
    element.hasMarkers = true;
    element.failing = {"AXBoundsForRange"};
    return element;
  }
  // A marker range's box is this one instead, as long as the rule holds for the true one.
  void lieAboutBoxes(ScriptedElement& element, std::function<bool(const TopLeftRect&)> rule,
                     AttributeValue box) {
    element.lies = [&element, rule, box](const AttributeRead& read) -> std::optional<AttributeValue> {
      if (read.attribute != "AXBoundsForTextMarkerRange") return std::nullopt;
      ScriptedElement honest = element;
      honest.lies = nullptr;
      const auto truth = answerThroughMarkers(honest, nullptr, read);
      const auto* rect = std::get_if<TopLeftRect>(&truth);
      return rect && rule(*rect) ? std::optional(box) : std::nullopt;
    };
  }
  // The caret stands there, at the start of its line if that is said, and the log told why once.
  void expectCaret(const TopLeftRect& rect, const std::vector<std::string>& log, bool startsLine = false) {
    const FieldSnapshot snapshot = read();
    EXPECT_EQ(snapshot.caretRect, rect);
    if (startsLine) {
      EXPECT_EQ(snapshot.lineStartX, 104);
    }
    read();
    std::vector<std::string> told;
    for (const auto& line : std::exchange(log_.lines, {})) told.push_back(line.message);
    std::vector<std::string> expected;
    for (const auto& message : log) expected.push_back("org.editor AXTextArea: " + message);
    EXPECT_EQ(told, expected);
  }
};

bool always(const TopLeftRect&) {
  return true;
}

TEST_F(CaretMeans, TextMarkersStandInForCharacters) {
  openWithMarkers(u"one\ntwo");
  expectCaret({104 + 3 * 8, 220, 1, 16}, {"caret found through text markers"});
}

TEST_F(CaretMeans, ALineBoxHoldsTheCaretOfANewLine) {
  openWithMarkers(u"one\n\ntwo").selection = {4, 0};
  expectCaret({104, 220, 1, 16}, {"caret found through line box (0x16)"}, true);
}

TEST_F(CaretMeans, ALeafOfThePageShowsTheCaretsText) {
  ScriptedElement& element = openWithMarkers(u"one two");
  lieAboutBoxes(element, always, TopLeftRect{});
  ScriptedElement leaf;
  leaf.attributes = {{"AXRole", std::string("AXStaticText")}, {"AXFrame", TopLeftRect{130, 300, 70, 20}}};
  const ObjectRef leafRef = ax_.addElement(leaf);
  element.leafAt = [leafRef](std::int64_t) { return leafRef; };
  const auto boxes = element.lies;
  element.lies = [&, boxes](const AttributeRead& read) -> std::optional<AttributeValue> {
    const bool ofLeaf = read.attribute == "AXTextMarkerRangeForUIElement" &&
                        std::get<ObjectRef>(read.parameter)->same(*leafRef);
    if (!ofLeaf) return boxes(read);
    const AttributeRead focus{"AXFocusedUIElement", {}};
    const auto focused =
        std::get<ObjectRef>(ax_.read(ax_.application(editor.processID), std::span(&focus, 1)).at(0));
    return answerThroughMarkers(element, focused, {"AXTextMarkerRangeForUIElement", focused});
  };
  element.selection = {3, 0};
  expectCaret({160, 300, 1, 20}, {"caret found through text runs (3 of 7 units)"});
}

TEST_F(CaretMeans, TheLineAboveIsBetterThanNone) {
  lieAboutBoxes(
      openWithMarkers(u"one\n"), [](const auto& box) { return box.y > 210 || box.width < 10; },
      TopLeftRect{});
  expectCaret({104, 220, 1, 16}, {"caret found through text markers under the line above"}, true);
}

TEST_F(CaretMeans, TheTextIsMeasuredWhenNoBoxIsFound) {
  ScriptedElement& element = openWithMarkers(u"one\ntwo");
  lieAboutBoxes(element, always, TopLeftRect{0, 0, 300, 200});
  const TopLeftRect measured{104 + 3 * 6.5, 217, 1, 13};
  expectCaret(measured,
              {"has text markers but no box for them (marker selection 300x200, marker before 300x200)",
               "caret measured from its text"},
              true);
  // With the font it once had.
  element.failing.insert("AXFontForRange");
  element.hasMarkers = false;
  expectCaret(measured, {"has no text-marker selection"});
  EXPECT_EQ(read().fontSize, std::nullopt);

  element.attributes["AXFrame"] = TopLeftRect{100, 200, 400, -3};
  EXPECT_EQ(read().caretRect, std::nullopt);
  EXPECT_EQ(read().fieldFrame, std::nullopt);
}

TEST_F(CaretMeans, ABoxThatContradictsTheTextIsNotBelieved) {
  const auto ref = open(add("AXTextArea", u"one\ntwo\nthree"));
  ax_.at(ref).attributes["AXBoundsForRange"] = TopLeftRect{140, 204, 8, 16};
  expectCaret({104 + 5 * 6.5, 230, 1, 13}, {"gives every line the box of the first one",
                                            "has no text-marker selection", "caret measured from its text"});
}

// --- where markers and offsets disagree ---

TEST_F(CaretMeans, TextMarkersWinOverAnOffsetThatWasLeftBehind) {
  ScriptedElement& element = ax_.at(open(add("AXTextArea", u"one\ntwo three")));
  element.hasMarkers = true;
  element.attributes["AXSelectedTextRange"] = TextRange{2, 0};
  element.selection = {7, 0};
  const FieldSnapshot snapshot = read();
  EXPECT_EQ(snapshot.before, "one\ntwo");
  EXPECT_EQ(snapshot.after, " three");
  EXPECT_EQ(snapshot.caretRect, (TopLeftRect{104 + 3 * 8, 220, 1, 16}));

  element.failing = {"AXStringForTextMarkerRange"};
  EXPECT_EQ(read().before, "on");
}

TEST_F(CaretMeans, LongTextsAreNotCrossChecked) {
  open(nullptr);
  for (const std::size_t length : {2999u, 3000u}) {
    const auto ref = add("AXTextArea", std::u16string(length, u'a'));
    ax_.focus(editor.processID, ref);
    ax_.at(ref).hasMarkers = true;
    ax_.askedTexts.clear();
    read();
    const auto asked = std::ranges::count(ax_.askedTexts, "AXStringForTextMarkerRange",
                                          [](const auto& text) { return text.read.attribute; });
    EXPECT_EQ(asked, length < 3000 ? 1 : 0) << length;
  }
}

}  // namespace
}  // namespace nimbletype
