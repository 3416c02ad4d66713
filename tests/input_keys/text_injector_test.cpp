#include "input/text_injector.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/scripted/recording_event_poster.h"
#include "platform/scripted/recording_log.h"
#include "text/text.h"

namespace nimbletype {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Line = RecordingLog::Line;

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

// An element that takes or refuses what is written to it.
struct OneElement : Accessibility {
  struct Element : AccessibilityObject {
    std::uint64_t hash() const override { return 1; }
    bool same(const AccessibilityObject&) const override { return true; }
  };
  ObjectRef application(std::int64_t) override { return nullptr; }
  std::vector<AttributeValue> read(const ObjectRef&, std::span<const AttributeRead> reads) override {
    return std::vector<AttributeValue>(reads.size());
  }
  bool write(const ObjectRef&, std::string_view attribute, const AttributeValue& value) override {
    if (accepts) written.emplace_back(std::string(attribute) + "=" + std::get<std::string>(value));
    return accepts;
  }
  std::optional<Task> observe(std::int64_t, Notification) override { return std::nullopt; }
  std::optional<Task> watch(std::int64_t, const ObjectRef&) override { return std::nullopt; }
  bool isTrusted() override { return true; }

  ObjectRef element = std::make_shared<Element>();
  bool accepts = true;
  std::vector<std::string> written;
};

struct TextInjectorTest : testing::Test {
  RecordingEventPoster poster;
  OneElement accessibility;
  RecordingLog log;
  TextInjector injector{poster, accessibility, log};
};

TEST_F(TextInjectorTest, TypesSpacesAsKeysAndTheRestAsText) {
  injector.type("  once upon");
  const KeyCombo space{key::space, {}};
  EXPECT_THAT(poster.posted,
              ElementsAre(RecordingEventPoster::Posted(space), RecordingEventPoster::Posted(space),
                          RecordingEventPoster::Posted(u"once upon")));
  EXPECT_THAT(log.lines, ElementsAre(Line{"input", "type: 11 units, post access true"}));
}

TEST_F(TextInjectorTest, PostsNothingWithoutAnEventSource) {
  poster.hasSource = false;
  injector.type("text");
  EXPECT_THAT(poster.posted, IsEmpty());
  EXPECT_THAT(log.lines, ElementsAre(Line{"input", "type: no event source"}));
}

TEST_F(TextInjectorTest, WritesThroughAccessibilityElseTypes) {
  const struct {
    const char* why;
    bool hasElement, accepts;
    std::vector<std::string> written;
    std::string typed;
  } cases[] = {
      {"taken by the element", true, true, {"AXSelectedText= more"}, ""},
      {"refused", true, false, {}, " more"},
      {"no element", false, true, {}, " more"},
  };
  for (const auto& c : cases) {
    accessibility.accepts = c.accepts;
    accessibility.written.clear();
    poster.posted.clear();
    injector.write(" more", c.hasElement ? accessibility.element : nullptr);
    EXPECT_EQ(accessibility.written, c.written) << c.why;
    EXPECT_EQ(poster.text(), c.typed) << c.why;
  }
}

TEST_F(TextInjectorTest, DeletesOneCharacterAPress) {
  injector.type("teh");
  injector.deleteBackwards(2);
  EXPECT_EQ(poster.text(), "t");
  injector.deleteBackwards();
  EXPECT_EQ(poster.text(), "");
  const std::size_t count = poster.posted.size();
  injector.deleteBackwards(0);
  EXPECT_EQ(poster.posted.size(), count);
}

}  // namespace
}  // namespace nimbletype
