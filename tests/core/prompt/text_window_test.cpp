#include "core/prompt/text_window.h"

#include <gtest/gtest.h>

namespace nimbletype {
namespace {

std::string prose(std::size_t words) {
  std::string text;
  for (std::size_t i = 0; i < words; ++i)
    text += "word" + std::to_string(i % 97) + (i % 23 == 22 ? ".\n" : " ");
  return text;
}

// The reader hands over at most the last 3000 characters, so the start of what it reads moves with every key.
TEST(TextWindow, MovesOnlyInLargeSteps) {
  const std::string document = prose(1500);
  TextWindow window;
  std::string last;
  int moves = 0;
  for (std::size_t end = 1; end <= document.size(); ++end) {
    const std::size_t start = end > 3000 ? end - 3000 : 0;
    const std::string now(window.of(std::string_view(document).substr(start, end - start), "field"));
    ASSERT_TRUE(document.substr(0, end).ends_with(now));
    ASSERT_LE(now.size(), TextWindow::longest);
    if (end > TextWindow::longest) {
      ASSERT_GE(now.size(), TextWindow::afterStep - 130);
    }
    if (!now.starts_with(last)) ++moves;
    last = now;
  }
  EXPECT_LE(moves, static_cast<int>(document.size() / 400));
  EXPECT_GE(moves, 10);
}

TEST(TextWindow, SurvivesDeletingAndStartsAnewElsewhere) {
  const std::string document = prose(400);
  TextWindow window;
  const std::string before(window.of(document, "a"));
  const std::string shorter(window.of(document.substr(0, document.size() - 100), "a"));
  EXPECT_TRUE(before.starts_with(shorter));
  EXPECT_EQ(window.of("short", "b"), "short");
  EXPECT_EQ(window.of("other text", "b"), "other text");
}

TEST(TextWindow, HoldsEnoughWhereverTheCaretGoes) {
  const std::string document = prose(900);
  TextWindow window;
  for (std::size_t end = document.size(); end > 20; end -= 20) {
    const std::string_view now = window.of(std::string_view(document).substr(0, end), "field");
    ASSERT_GE(now.size(), std::min<std::size_t>(end, TextWindow::shortest)) << "at " << end;
  }
}

TEST(TextWindow, KeepsCharactersWhole) {
  std::string emoji;
  for (int i = 0; i < 1600; ++i) emoji += "👍🏽";
  TextWindow window;
  const auto end = window.of(emoji, "a");
  EXPECT_EQ(end.size() % std::string_view("👍🏽").size(), 0U);
  EXPECT_LT(end.size(), emoji.size());
}

}  // namespace
}  // namespace nimbletype
