#include "core/prompt/prompt_builder.h"

#include <gtest/gtest.h>

namespace nimbletype {
namespace {

std::string times(std::string_view s, int count) {
  std::string repeated;
  for (int i = 0; i < count; ++i) repeated += s;
  return repeated;
}

PromptContext everything() {
  PromptContext c;
  c.appName = "Mail";
  c.windowTitle = times("é", 121);
  c.domain = "example.org";
  c.now = "Friday 7 March 2025";
  c.writerName = "Kate";
  c.aboutWriter = times("w", 1201);
  c.examples = {"short one", times("x", 221)};
  c.clipboard = times("c", 501);
  c.screenText = "cut" + times("s", 900);
  c.nearbyText = times("n", 501);
  c.recentText = times("r", 501);
  return c;
}

TEST(PromptBuilder, UserMessageHasEveryPartAtItsLength) {
  EXPECT_EQ(
      userMessage(everything(), "Dear"),
      "Context, for your guess only:\nApp: Mail\nWindow: " + times("é", 120) +
          "…\nWebsite: example.org\nNow: Friday 7 March 2025\nThe writer's name: Kate\nAbout the writer: " +
          times("w", 1200) + "…\nHow the writer phrases things:\n- \"short one\"\n- \"" + times("x", 220) +
          "…\"\nRecently copied text: \"" + times("c", 500) + "…\"\nText visible on screen: \"…" +
          times("s", 900) + "\"\nOther windows beside it:\n" + times("n", 500) +
          "…\nWindows looked at just before:\n" + times("r", 500) +
          "…\n\nText typed so far (it may end mid-word):\n\"\"\"\nDear\n\"\"\"\nContinue it.");
}

TEST(PromptBuilder, NoContextMeansNoContextLines) {
  EXPECT_EQ(userMessage({}, "a" + times("b", 1500)), "Text typed so far (it may end mid-word):\n\"\"\"\n" +
                                                         times("b", 1500) + "\n\"\"\"\nContinue it.");
  EXPECT_EQ(rawPrompt({}, "Dear"), "Dear");
}

TEST(PromptBuilder, RawFormHasItsOwnLengths) {
  PromptContext c = everything();
  c.windowTitle = "Re: budget";
  EXPECT_EQ(rawPrompt(c, "Dear"),
            "[Context] Mail, Re: budget, example.org\n[Now] Friday 7 March 2025\n[Writer] " +
                times("w", 600) + "…\n[Writer's phrasing] short one\n[Writer's phrasing] " + times("x", 220) +
                "…\n[Copied] " + times("c", 400) + "…\n[Beside it] " + times("n", 400) +
                "…\n[Looked at just before] " + times("r", 500) + "…\n[On screen] " + times("s", 900) +
                "\n\nDear");
  EXPECT_TRUE(rawPrompt(everything(), "").starts_with("[Context] Mail, " + times("é", 94) + "…\n"));
}

TEST(PromptBuilder, EndingHint) {
  const std::string word = "it may end mid-word", blank = "it ends with a space, so start with a new word";
  const std::pair<const char*, std::string> cases[] = {{"", "it is empty"},
                                                       {"word ", blank},
                                                       {"line\n", blank},
                                                       {"caf\u00e9", word},
                                                       {"cafe\u0301", word},
                                                       {"日本", word},
                                                       {"7", word},
                                                       {"Hi,", "it ends with \",\""},
                                                       {"ok 👍🏽", "it ends with \"👍🏽\""}};
  for (const auto& [before, hint] : cases) EXPECT_EQ(endingHint(before), hint) << before;
}

TEST(PromptBuilder, SystemPromptStatesTheBudgetAndEndsWithoutALineFeed) {
  const std::string prompt = systemPrompt(22);
  EXPECT_NE(prompt.find("\n- Write at most 22 words and stop at a natural point.\n"), std::string::npos);
  EXPECT_TRUE(prompt.ends_with("Reply: honestly the best I've had in years."));
}

}  // namespace
}  // namespace nimbletype
