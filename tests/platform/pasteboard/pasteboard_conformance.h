#pragma once
#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <string>

#include "platform/pasteboard/pasteboard.h"

// What every `Pasteboard` must do. Instantiate with a default-constructible harness that has
//   Pasteboard& pasteboard();
//   bool runUntil(std::function<bool()> done);  // lets the main loop run; false when it gave up
//   using Formats = std::map<std::string, std::string>;
//   std::string textFormat();
//   std::string passingMark();         // a format that marks text as passing
//   void copy(Formats formats);        // as another application; nothing empties the pasteboard
//   Formats paste();                   // as yet another application, everything it can get
//   void hang(bool hangs);             // the application that copied
namespace nimbletype {

template <typename Harness>
class PasteboardConformance : public testing::Test {
 protected:
  using Formats = std::map<std::string, std::string>;

  Pasteboard& pasteboard() { return harness_.pasteboard(); }
  std::optional<SavedPasteboard> save() {
    std::optional<std::optional<SavedPasteboard>> answer;
    const Task task = pasteboard().save([&](auto saved) { answer = std::move(saved); });
    EXPECT_FALSE(answer.has_value()) << "answered before a later turn";
    EXPECT_TRUE(harness_.runUntil([&] { return answer.has_value(); })) << "never answered";
    return answer ? *answer : std::nullopt;
  }
  // Copies, saves, lends a text and restores.
  void throughALoan(const Formats& formats) {
    harness_.copy(formats);
    const auto saved = save();
    ASSERT_TRUE(saved);
    EXPECT_EQ(saved->leftOut, 0u);
    ASSERT_TRUE(pasteboard().lend("lent"));
    pasteboard().restore(*saved);
  }
  Formats several() {
    std::string large(3'000'000, 'x');
    for (std::size_t i = 0; i < large.size(); i += 7) large[i] = static_cast<char>(i / 7);
    return {{harness_.textFormat(), "naïve café 👍🏽"},
            {"text/html", "<b>naïve</b>"},
            {"image/png", std::string("\x89PNG\0\xFF\r\n", 8)},
            {"application/x-large", large}};
  }
  void expectFound(const Formats& formats) {
    const Formats found = harness_.paste();
    for (const auto& [format, data] : formats) {
      ASSERT_TRUE(found.contains(format)) << format;
      EXPECT_EQ(found.at(format).size(), data.size()) << format;
      EXPECT_TRUE(found.at(format) == data) << format;
    }
  }

  Harness harness_;
};

TYPED_TEST_SUITE_P(PasteboardConformance);

TYPED_TEST_P(PasteboardConformance, BringsBackEveryFormat) {
  const auto formats = this->several();
  this->throughALoan(formats);
  this->expectFound(formats);
  EXPECT_FALSE(this->harness_.paste().contains(this->harness_.passingMark()));
  // Once more, from what it has put there itself.
  const auto saved = this->save();
  ASSERT_TRUE(saved);
  ASSERT_TRUE(this->pasteboard().lend("lent again"));
  this->pasteboard().restore(*saved);
  this->expectFound(formats);
}

TYPED_TEST_P(PasteboardConformance, BringsBackNothingWhereThereWasNothing) {
  this->throughALoan({});
  EXPECT_TRUE(this->harness_.paste().empty());
}

TYPED_TEST_P(PasteboardConformance, LendsATextMarkedAsPassing) {
  this->harness_.copy({{this->harness_.textFormat(), "theirs"}});
  for (const std::string& text : {std::string("naïve 👍🏽\n"), std::string(400'000, 'y')}) {
    ASSERT_TRUE(this->pasteboard().lend(text));
    EXPECT_TRUE(this->pasteboard().isOurs());
    EXPECT_NE(this->pasteboard().reading(), Pasteboard::Reading::done);
    this->expectFound({{this->harness_.textFormat(), text}});
    EXPECT_TRUE(this->harness_.paste().contains(this->harness_.passingMark()));
    EXPECT_TRUE(this->harness_.runUntil([&] {
      const auto reading = this->pasteboard().reading();
      return reading == Pasteboard::Reading::done || reading == Pasteboard::Reading::unknown;
    })) << "never read to its end";
  }
}

TYPED_TEST_P(PasteboardConformance, NoticesThatSomethingElseWasCopied) {
  EXPECT_FALSE(this->pasteboard().isOurs());
  this->throughALoan({{this->harness_.textFormat(), "old"}});
  EXPECT_TRUE(this->pasteboard().isOurs());
  this->harness_.copy({{this->harness_.textFormat(), "new"}});
  EXPECT_FALSE(this->pasteboard().isOurs());
  this->expectFound({{this->harness_.textFormat(), "new"}});
  this->throughALoan({{this->harness_.textFormat(), "newer"}});
  this->expectFound({{this->harness_.textFormat(), "newer"}});
}

TYPED_TEST_P(PasteboardConformance, GivesUpAnApplicationThatHangs) {
  this->harness_.copy({{this->harness_.textFormat(), "theirs"}});
  this->harness_.hang(true);
  EXPECT_EQ(this->save().has_value(), false);
  this->harness_.hang(false);
  EXPECT_TRUE(this->save().has_value());
  this->expectFound({{this->harness_.textFormat(), "theirs"}});
}

TYPED_TEST_P(PasteboardConformance, DestroyedTasksAreNeverAnswered) {
  this->harness_.copy({{this->harness_.textFormat(), "theirs"}});
  bool answered = false;
  {
    const Task dropped = this->pasteboard().save([&](const auto&) { answered = true; });
  }
  Task replaced = this->pasteboard().save([&](const auto&) { answered = true; });
  replaced = this->pasteboard().save([](const auto&) {});
  EXPECT_TRUE(this->save().has_value());
  EXPECT_FALSE(answered);
}

REGISTER_TYPED_TEST_SUITE_P(PasteboardConformance, BringsBackEveryFormat,
                            BringsBackNothingWhereThereWasNothing, LendsATextMarkedAsPassing,
                            NoticesThatSomethingElseWasCopied, GivesUpAnApplicationThatHangs,
                            DestroyedTasksAreNeverAnswered);

}  // namespace nimbletype
