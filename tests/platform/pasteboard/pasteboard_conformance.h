#pragma once
#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <string>

#include "platform/pasteboard/pasteboard.h"
#include "tests/platform/system/task_lifetimes.h"

// What every `Pasteboard` must do. Instantiate with a default-constructible harness that has
//   Pasteboard& pasteboard();
//   void waitFor(std::string what, std::function<bool()> condition);  // lets the main loop run
//   using Formats = std::map<std::string, std::string>;
//   std::string textFormat();
//   std::string passingMark();         // a format that marks text as passing
//   void copy(Formats formats);        // as another application; nothing empties the pasteboard
//   Formats paste();                   // as yet another application, everything it can get
//   void hang(bool hangs);             // the application that copied
namespace nimbletype {

template <typename Harness>
struct PasteboardConformance : testing::Test, Harness {
  using Formats = std::map<std::string, std::string>;

  std::optional<SavedPasteboard> save() {
    std::optional<std::optional<SavedPasteboard>> answer;
    const Task task = this->pasteboard().save([&](auto saved) { answer = std::move(saved); });
    EXPECT_FALSE(answer.has_value()) << "answered before a later turn";
    this->waitFor("what is on the pasteboard", [&] { return answer.has_value(); });
    return *answer;
  }
  // Saves, lends a text and restores.
  void lendAndRestore() {
    const auto saved = save();
    ASSERT_TRUE(saved);
    EXPECT_EQ(saved->leftOut, 0u);
    ASSERT_TRUE(this->pasteboard().lend("lent"));
    this->pasteboard().restore(*saved);
  }
  void copyText(const std::string& text) { this->copy({{this->textFormat(), text}}); }
  void expectFound(const Formats& formats) {
    const Formats found = this->paste();
    for (const auto& [format, data] : formats) {
      ASSERT_TRUE(found.contains(format)) << format;
      EXPECT_TRUE(found.at(format) == data) << format << ", " << found.at(format).size() << " bytes";
    }
  }
  void expectText(const std::string& text) { expectFound({{this->textFormat(), text}}); }
};
TYPED_TEST_SUITE_P(PasteboardConformance);

TYPED_TEST_P(PasteboardConformance, BringsBackEveryFormat) {
  std::string large(3'000'000, 'x');
  for (std::size_t i = 0; i < large.size(); i += 7) large[i] = static_cast<char>(i / 7);
  const std::map<std::string, std::string> formats{{this->textFormat(), "naïve café 👍🏽"},
                                                   {"text/html", "<b>naïve</b>"},
                                                   {"image/png", std::string("\x89PNG\0\xFF\r\n", 8)},
                                                   {"application/x-large", large}};
  this->copy(formats);
  for (int i = 0; i < 2; ++i) {  // the second time, from what it has put there itself
    this->lendAndRestore();
    this->expectFound(formats);
  }
  EXPECT_FALSE(this->paste().contains(this->passingMark()));
}

TYPED_TEST_P(PasteboardConformance, BringsBackNothingWhereThereWasNothing) {
  this->copy({});
  this->lendAndRestore();
  EXPECT_TRUE(this->paste().empty());
}

TYPED_TEST_P(PasteboardConformance, LendsATextMarkedAsPassing) {
  this->copyText("theirs");
  for (const std::string& text : {std::string("naïve 👍🏽\n"), std::string(400'000, 'y')}) {
    ASSERT_TRUE(this->pasteboard().lend(text));
    EXPECT_TRUE(this->pasteboard().isOurs());
    EXPECT_NE(this->pasteboard().reading(), Pasteboard::Reading::done);
    this->expectText(text);
    EXPECT_TRUE(this->paste().contains(this->passingMark()));
    this->waitFor("the reading to end", [&] {
      const auto reading = this->pasteboard().reading();
      return reading == Pasteboard::Reading::done || reading == Pasteboard::Reading::unknown;
    });
  }
}

TYPED_TEST_P(PasteboardConformance, NoticesThatSomethingElseWasCopied) {
  EXPECT_FALSE(this->pasteboard().isOurs());
  for (const char* text : {"old", "new"}) {
    this->copyText(text);
    EXPECT_FALSE(this->pasteboard().isOurs());
    this->expectText(text);
    this->lendAndRestore();
    EXPECT_TRUE(this->pasteboard().isOurs());
    this->expectText(text);
  }
}

TYPED_TEST_P(PasteboardConformance, GivesUpAnApplicationThatHangs) {
  this->copyText("theirs");
  for (const bool hangs : {true, false}) {
    this->hang(hangs);
    EXPECT_NE(this->save().has_value(), hangs);
  }
  this->expectText("theirs");
}

TYPED_TEST_P(PasteboardConformance, DestroyedTasksAreNeverAnswered) {
  this->copyText("theirs");
  expectTaskLifetimes([&](auto done) { return this->pasteboard().save([done](const auto&) { done(); }); },
                      [&](auto... wait) { this->waitFor(wait...); });
  EXPECT_TRUE(this->save().has_value());
}

REGISTER_TYPED_TEST_SUITE_P(PasteboardConformance, BringsBackEveryFormat,
                            BringsBackNothingWhereThereWasNothing, LendsATextMarkedAsPassing,
                            NoticesThatSomethingElseWasCopied, GivesUpAnApplicationThatHangs,
                            DestroyedTasksAreNeverAnswered);

}  // namespace nimbletype
