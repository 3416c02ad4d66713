#include "platform/linux/accessibility/text/atspi_rich_text.h"

#include <gtest/gtest.h>

namespace nimbletype {
namespace {

using Children = std::vector<RichTextNode>;
constexpr std::int64_t nowhere = -1;

RichTextNode block(const char* path, std::u32string text, std::int64_t caret = nowhere,
                   Children children = {}) {
  return {.element = std::make_shared<AtspiObject>(":1.5", path),
          .text = std::move(text),
          .caret = caret,
          .children = std::move(children)};
}

RichTextNode link(const char* path, std::u32string text, std::int64_t caret = nowhere) {
  RichTextNode node = block(path, std::move(text), caret);
  node.isBlock = false;
  return node;
}

struct Case {
  const char* name;
  RichTextNode root;
  std::string text;
  std::int64_t caret;
  // The element and offset of the character at the caret.
  std::string path;
  std::int64_t offset;
};

const std::vector<Case> cases{
    {"nothing", block("/r", U"", 0), "", 0, "", 0},
    {"an emptied field keeps a line break", block("/r", U"\n", 1), "", 0, "/r", 0},
    {"so does the end of a line", block("/r", U"abc\n", 4), "abc", 3, "/r", 3},
    {"of two line breaks one shows", block("/r", U"abc\n\n", 5), "abc\n", 4, "/r", 4},
    {"paragraphs", block("/r", U"\uFFFC\uFFFC", 1, {block("/a", U"abc"), block("/b", U"d🎉f", 2)}),
     "abc\nd🎉f", 7, "/b", 2},
    {"text before the first of them", block("/r", U"abc\uFFFC", 3, {block("/a", U"de", 1)}), "abc\nde", 5,
     "/a", 1},
    {"a paragraph that has just begun",
     block("/r", U"\uFFFC\uFFFC", 1, {block("/a", U"abc"), block("/b", U"\n", 0)}), "abc\n", 4, "/b", 0},
    {"an empty one between two",
     block("/r", U"\uFFFC\uFFFC\uFFFC", 1, {block("/a", U"a"), block("/b", U"\n", 0), block("/c", U"c")}),
     "a\n\nc", 2, "/b", 0},
    {"behind the last one", block("/r", U"\uFFFC\uFFFC", 2, {block("/a", U"a"), block("/b", U"b\n")}), "a\nb",
     3, "/b", 1},
    {"a link within a line", block("/r", U"see \uFFFC now", 4, {link("/a", U"this", 4)}), "see this now", 8,
     "/r", 5},
    {"a list",
     block("/r", U"\uFFFC", 0,
           {block("/l", U"\uFFFC\uFFFC", 1, {block("/a", U"• a"), block("/b", U"• b", 3)})}),
     "• a\n• b", 7, "", 0},
    {"an object nobody knows", block("/r", U"a\uFFFCb", 2), "a\uFFFCb", 2, "/r", 2},
};

TEST(AtspiRichText, PutsTogetherWhatPeopleSee) {
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    const AtspiRichText rich(c.root);
    EXPECT_EQ(rich.text({0, rich.size()}), c.text);
    EXPECT_EQ(rich.selection(), (TextRange{c.caret, 0}));
    const auto place = rich.placeOf({c.caret, 0});
    EXPECT_EQ(place ? place->element->path() : "", c.path);
    EXPECT_EQ(place ? place->start : 0, c.offset);
  }
}

TEST(AtspiRichText, FindsTheElementOfARange) {
  const AtspiRichText rich(block("/r", U"\uFFFC\uFFFC", 0, {block("/a", U"abc", 0), block("/b", U"d🎉f")}));
  const auto emoji = rich.placeOf({5, 2});
  ASSERT_TRUE(emoji);
  EXPECT_EQ(emoji->element->path(), "/b");
  EXPECT_EQ(emoji->start, 1);
  EXPECT_EQ(emoji->end, 2);
  EXPECT_FALSE(rich.placeOf({2, 3}));  // across paragraphs
  EXPECT_FALSE(rich.placeOf({3, 1}));  // what separates them
  EXPECT_FALSE(rich.placeOf({9, 1}));
  EXPECT_FALSE(rich.placeOf({-1, 1}));
}

TEST(AtspiRichText, SelectsAcrossParagraphs) {
  RichTextNode first = block("/a", U"abc"), second = block("/b", U"def", 2);
  first.selectionStart = 1, first.selectionEnd = 3;
  second.selectionStart = 0, second.selectionEnd = 2;
  RichTextNode root = block("/r", U"\uFFFC\uFFFC", 1, {first, second});
  root.selectionStart = 0, root.selectionEnd = 2;
  EXPECT_EQ(AtspiRichText(root).selection(), (TextRange{1, 5}));
}

}  // namespace
}  // namespace nimbletype
