#include "input/field/field_snapshot.h"

#include <gtest/gtest.h>

namespace nimbletype {
namespace {

struct AfterCase {
  std::string after, restOfLine;
  bool isAtTextEnd = false;
};

TEST(FieldSnapshot, WhatFollowsTheCaret) {
  const std::vector<AfterCase> table{
      {"", "", true},
      {"abc", "abc"},
      {"abc\r\ndef", "abc"},
      {"abc\ndef", "abc"},
      {"abc\rdef", "abc"},
      {"\nabc", ""},
      {"a\u2028b", "a\u2028b"},
      {"  \n\t", "  ", true},
      {"\u00A0\r\n", "\u00A0", true},
      {" x", " x"},
  };
  for (const auto& c : table) {
    SCOPED_TRACE(c.after);
    const FieldSnapshot snapshot{.after = c.after};
    EXPECT_EQ(snapshot.restOfLine(), c.restOfLine);
    EXPECT_EQ(snapshot.isAtTextEnd(), c.isAtTextEnd);
  }
}

TEST(FieldSnapshot, FollowsFinishedLine) {
  const std::vector<std::pair<std::string, bool>> table{
      {"", false},
      {"Done.", false},
      {"Done.\n", true},
      {"Done.\n\n\n", true},
      {"Done. \t\u00A0\n", true},
      {"Done.\r\n", true},
      {"Done.\r\n\u2028\u0085\v", true},
      {"Done\n", false},
      {"Done.\nmore\n", false},
      {"more\nDone.\n", true},
      {"\n\n", false},
      {"   \n", false},
      {"Done.\n   \n", false},
      {"Done.\n  ", false},
      {"Dear Ann,\n", true},
      {"“Yes”\n", true},
      {"(so)\n", true},
      {"完了。\n", true},
      {"a、\n", true},
      {"list -\n", false},
      {"it's '\n", false},
  };
  for (const auto& [before, follows] : table)
    EXPECT_EQ(FieldSnapshot{.before = before}.followsFinishedLine(), follows) << before;
}

TEST(FieldSnapshot, ComparesEveryFieldExactly) {
  const FieldSnapshot one{.fieldKey = "a:1", .caretRect = TopLeftRect{10, 20, 1, 16}};
  auto other = one;
  EXPECT_EQ(one, other);
  other.caretRect->x += 0.5;
  EXPECT_NE(one, other);
  other.caretRect.reset();
  EXPECT_NE(one, other);
  EXPECT_EQ(FieldSnapshot(), FieldSnapshot());
  EXPECT_NE(FieldSnapshot{.fontSize = 0}, FieldSnapshot());
}

}  // namespace
}  // namespace nimbletype
