#pragma once
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/accessibility/accessibility.h"
#include "text/text.h"

// What every `Accessibility` has to do, run against a field that is focused and holds `text`.
namespace nimbletype::conformance {

inline const std::string fieldText = "naïve café 😀👍🏽 日本語\nsecond";

class AccessibilityWorld {
 public:
  virtual ~AccessibilityWorld() = default;
  virtual Accessibility& accessibility() = 0;
  virtual std::int64_t processID() = 0;
  // Lets the main loop run until the condition holds; a failure names what was waited for.
  virtual void waitFor(const std::string& what, const std::function<bool()>& condition) = 0;
};
template <typename World>
std::unique_ptr<AccessibilityWorld> makeAccessibilityWorld() {
  return std::make_unique<World>();
}

class AccessibilityConformance : public ::testing::TestWithParam<std::unique_ptr<AccessibilityWorld> (*)()> {
 protected:
  void SetUp() override {
    world_ = GetParam()();
    waitFor("a focused element", [this] {
      application_ = ax().application(world_->processID());
      field_ = application_ ? object(application_, "AXFocusedUIElement") : nullptr;
      return field_ != nullptr;
    });
    ASSERT_TRUE(field_);
  }

  Accessibility& ax() { return world_->accessibility(); }
  std::int64_t process() { return world_->processID(); }
  void waitFor(const std::string& what, const std::function<bool()>& condition) {
    world_->waitFor(what, condition);
  }

  AttributeValue value(const ObjectRef& element, AttributeRead read) {
    return ax().read(element, std::span(&read, 1)).at(0);
  }
  template <typename T>
  T value(const ObjectRef& element, AttributeRead read) {
    const AttributeValue found = value(element, read);
    EXPECT_TRUE(std::holds_alternative<T>(found)) << read.attribute;
    return std::holds_alternative<T>(found) ? std::get<T>(found) : T{};
  }
  ObjectRef object(const ObjectRef& element, const char* attribute) {
    const AttributeValue found = value(element, {attribute, {}});
    return std::holds_alternative<ObjectRef>(found) ? std::get<ObjectRef>(found) : nullptr;
  }
  std::string string(std::int64_t location, std::int64_t length) {
    return value<std::string>(field_, {"AXStringForRange", TextRange{location, length}});
  }
  TopLeftRect bounds(std::int64_t location, std::int64_t length) {
    return value<TopLeftRect>(field_, {"AXBoundsForRange", TextRange{location, length}});
  }
  TextRange selection() { return value<TextRange>(field_, {"AXSelectedTextRange", {}}); }
  void waitForSelection(TextRange range) {
    waitFor("the selection at " + std::to_string(range.location), [&] { return selection() == range; });
  }
  void select(TextRange range) {
    ASSERT_TRUE(ax().write(field_, "AXSelectedTextRange", range));
    waitForSelection(range);
  }
  static std::int64_t units(std::string_view s) { return static_cast<std::int64_t>(text::utf16Length(s)); }

  // Level by level.
  bool leadsToField(ObjectList level, const char* attribute, int depth) {
    ObjectList next;
    for (const ObjectRef& element : level) {
      if (element->same(*field_)) return true;
      const AttributeRead read{attribute, {}};
      const AttributeValue answer = ax().readBriefly(element, std::span(&read, 1)).at(0);
      if (const auto* children = std::get_if<ObjectList>(&answer))
        next.insert(next.end(), children->begin(), children->end());
    }
    return depth > 0 && !next.empty() && leadsToField(std::move(next), attribute, depth - 1);
  }

  std::unique_ptr<AccessibilityWorld> world_;
  ObjectRef application_, field_;
};

TEST_P(AccessibilityConformance, KnowsElementsByIdentity) {
  EXPECT_EQ(ax().application(999'999'999), nullptr);
  EXPECT_FALSE(ax().observe(999'999'999, [](std::string_view, const ObjectRef&) {}));
  EXPECT_TRUE(ax().application(process())->same(*application_));
  const ObjectRef again = object(application_, "AXFocusedUIElement");
  ASSERT_TRUE(again);
  EXPECT_TRUE(again->same(*field_));
  EXPECT_EQ(again->hash(), field_->hash());
  EXPECT_FALSE(field_->same(*application_));
}

TEST_P(AccessibilityConformance, AnswersEachReadOfABatch) {
  const std::vector<AttributeRead> reads{
      {"AXRole", {}},  {"AXNoSuchThing", {}}, {"AXIsSettable:AXValue", {}},
      {"AXFrame", {}}, {"AXSubrole", {}},     {"AXNoSuchThingForRange", TextRange{0, 1}}};
  const auto values = ax().read(field_, reads);
  ASSERT_EQ(values.size(), reads.size());
  EXPECT_EQ(values[0], AttributeValue(std::string("AXTextArea")));
  EXPECT_EQ(values[1], AttributeValue());
  EXPECT_EQ(values[2], AttributeValue(true));
  ASSERT_TRUE(std::holds_alternative<TopLeftRect>(values[3]));
  EXPECT_GT(std::get<TopLeftRect>(values[3]).height, 0);
  EXPECT_EQ(values[4], AttributeValue());
  EXPECT_EQ(values[5], AttributeValue());
  EXPECT_TRUE(ax().read(field_, {}).empty());
  EXPECT_FALSE(ax().write(field_, "AXSelectedText", TextRange{}));
  const TextFont font = value<TextFont>(field_, {"AXFontForRange", TextRange{0, 1}});
  EXPECT_FALSE(font.name.value_or("").empty());
  EXPECT_GT(font.size.value_or(0), 4);
  EXPECT_LT(font.size.value_or(0), 60);
}

TEST_P(AccessibilityConformance, CountsUtf16Units) {
  select({units(fieldText), 0});
  EXPECT_EQ(value<double>(field_, {"AXNumberOfCharacters", {}}), static_cast<double>(units(fieldText)));
  EXPECT_EQ(string(0, units(fieldText)), fieldText);
  EXPECT_EQ(string(units("naïve café "), units("😀")), "😀");
  EXPECT_EQ(string(units("naïve café 😀"), units("👍🏽 日")), "👍🏽 日");
  EXPECT_EQ(string(0, 0), "");
  EXPECT_EQ(string(units("naïve café 😀👍🏽 日本語\n"), 1000), "second");
  EXPECT_EQ(string(units(fieldText) + 10, 10), "");
}

TEST_P(AccessibilityConformance, TellsWhereCharactersStand) {
  select({units("naï"), 0});
  const TopLeftRect previous = bounds(2, 1), caret = bounds(3, 0), next = bounds(3, 1);
  const TopLeftRect frame = value<TopLeftRect>(field_, {"AXFrame", {}});
  EXPECT_GT(previous.height, 0);
  EXPECT_GT(previous.width, 0);
  EXPECT_EQ(caret.width, 0);
  EXPECT_NEAR(caret.x, previous.right(), 1.5);
  EXPECT_NEAR(next.x, caret.x, 1.5);
  EXPECT_GE(previous.x, frame.x);
  EXPECT_LT(previous.bottom(), frame.bottom());
  // A zero rectangle says that the application does not know; anything else has to be right.
  const TopLeftRect below = bounds(units("naïve café 😀👍🏽 日本語\n"), 1);
  if (below == TopLeftRect{}) return;
  EXPECT_GE(below.y, previous.bottom() - 1);
  EXPECT_NEAR(below.x, bounds(0, 1).x, 1.5);
}

TEST_P(AccessibilityConformance, LeadsUpToTheApplication) {
  ObjectRef element = field_;
  for (int i = 0; i < 50 && element && !element->same(*application_); ++i)
    element = object(element, "AXParent");
  ASSERT_TRUE(element);
  EXPECT_TRUE(element->same(*application_));
  const ObjectRef window = object(application_, "AXFocusedWindow");
  ASSERT_TRUE(window);
  EXPECT_FALSE(value<std::string>(window, {"AXTitle", {}}).empty());
}

TEST_P(AccessibilityConformance, ListsWindowsAndTheirChildrenDownToTheField) {
  const auto windows = value<ObjectList>(application_, {"AXWindows", {}});
  const ObjectRef focused = object(application_, "AXFocusedWindow");
  EXPECT_TRUE(std::ranges::any_of(windows, [&](const ObjectRef& w) { return w->same(*focused); }));
  // A brief read may come to nothing while the machine is busy.
  for (const char* attribute : {"AXChildren", "AXVisibleChildren"})
    waitFor(std::string("the field among the ") + attribute,
            [&] { return leadsToField({focused}, attribute, 20); });
  EXPECT_EQ(value(field_, {"AXWindows", {}}), AttributeValue());
}

TEST_P(AccessibilityConformance, ReplacesTheSelectionAndTellsOfIt) {
  std::vector<std::string> heard;
  auto observing = ax().observe(process(), [&](std::string_view name, const ObjectRef& element) {
    if (element && element->same(*field_)) heard.emplace_back(name);
  });
  auto watching = ax().watch(process(), field_);
  ASSERT_TRUE(observing && watching);
  const auto begin = units("naïve café "), end = begin + units("😀👍🏽");
  select({begin, end - begin});
  ASSERT_TRUE(ax().write(field_, "AXSelectedText", std::string("ünd 🎉")));
  waitFor("a value change told", [&] { return std::ranges::find(heard, "AXValueChanged") != heard.end(); });
  const std::string expected = "naïve café ünd 🎉 日本語\nsecond";
  waitForSelection({begin + units("ünd 🎉"), 0});
  EXPECT_EQ(string(0, 1000), expected);
  EXPECT_EQ(value<std::string>(field_, {"AXValue", {}}), expected);

  ASSERT_TRUE(ax().write(field_, "AXSelectedText", std::string(" x")));
  waitFor("the insertion at the caret",
          [&] { return string(0, 1000) == "naïve café ünd 🎉 x 日本語\nsecond"; });
}

TEST_P(AccessibilityConformance, IsSilentOnceATaskIsGone) {
  int ended = 0, unwatched = 0, watched = 0;
  auto gone = ax().observe(process(), [&](std::string_view, const ObjectRef&) { ++ended; });
  auto alive = ax().observe(process(), [&](std::string_view name, const ObjectRef&) {
    ++(name == "AXValueChanged" ? watched : unwatched);
  });
  ASSERT_TRUE(gone && alive);
  gone.reset();
  auto watching = ax().watch(process(), field_);
  ASSERT_TRUE(ax().write(field_, "AXSelectedText", std::string("one")));
  waitFor("the first insertion told", [&] { return watched > 0; });
  EXPECT_EQ(ended, 0);

  watching.reset();
  const int before = watched;
  ASSERT_TRUE(ax().write(field_, "AXSelectedText", std::string("two")));
  watching = ax().watch(process(), application_);  // another element of the same process does not count
  waitFor("the second insertion done", [&] { return string(0, 1000).find("two") != std::string::npos; });
  EXPECT_EQ(watched, before);
}

TEST_P(AccessibilityConformance, TellsOfTheSameTextThroughMarkersIfAtAll) {
  EXPECT_FALSE(ax().endsOf(nullptr));
  EXPECT_FALSE(ax().endsOf(field_));
  EXPECT_FALSE(ax().markerRange({field_, field_}));
  EXPECT_FALSE(ax().markerRange({nullptr, nullptr}));
  select({units("naïve "), units("café")});
  const ObjectRef selected = object(field_, "AXSelectedTextMarkerRange");
  if (!selected) return;
  EXPECT_EQ(value<std::string>(field_, {"AXStringForTextMarkerRange", selected}), "café");
  const auto word = ax().endsOf(selected);
  const auto whole = ax().endsOf(value<ObjectRef>(field_, {"AXTextMarkerRangeForUIElement", field_}));
  ASSERT_TRUE(word && whole);
  const ObjectRef before = ax().markerRange({whole->from, word->from});
  EXPECT_EQ(value<std::string>(field_, {"AXStringForTextMarkerRange", before}), "naïve ");
  const auto previous = value<ObjectRef>(field_, {"AXPreviousTextMarkerForTextMarker", word->from});
  const ObjectRef character = ax().markerRange({previous, word->from});
  EXPECT_EQ(value<TopLeftRect>(field_, {"AXBoundsForTextMarkerRange", character}), bounds(units("naïve"), 1));
  EXPECT_FALSE(ax().endsOf(previous));
}

}  // namespace nimbletype::conformance
