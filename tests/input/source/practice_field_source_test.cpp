#include "input/source/practice_field_source.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "input/source/source_switch.h"

namespace nimbletype {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Window : public LocalField {
 public:
  LocalFieldState state() const override { return shown; }
  void replaceSelection(const std::string& text) override { inserted.push_back(text); }
  void deleteBackwards(int count) override { deleted += count; }
  LocalFieldState shown;
  std::vector<std::string> inserted;
  int deleted = 0;
};

class Others : public FieldSource {
 public:
  std::optional<FieldSnapshot> snapshot() override { return FieldSnapshot{.bundleID = "org.other"}; }
  std::optional<std::string> whyNoField() const override { return "others"; }
  void onChange(std::function<void(Change)> listener) override { changed = std::move(listener); }
  void insert(const std::string& text, InsertionMethod) override { inserted.push_back(text); }
  void deleteBackwards(int) override {}
  std::function<void(Change)> changed;
  std::vector<std::string> inserted;
};

TEST(PracticeFieldSource, DescribesOurOwnField) {
  Window window;
  PracticeFieldSource source(window, "org.nimbletype");
  EXPECT_EQ(source.snapshot(), std::nullopt);
  EXPECT_EQ(source.whyNoField(), "org.nimbletype: nothing focused");
  source.focusChanged(true);
  window.shown = {
      std::u16string(4000, u'a') + u"b😀c", {4001, 2}, TopLeftRect{5, 6, 1, 14}, 2, {}, {}, "Try it"};
  const FieldSnapshot snapshot = source.snapshot().value();
  EXPECT_EQ(snapshot.appName, "Nimbletype");
  EXPECT_EQ(snapshot.role, "AXTextArea");
  EXPECT_TRUE(snapshot.isLocal);
  EXPECT_EQ(snapshot.before, std::string(2999, 'a') + "b");
  EXPECT_EQ(snapshot.after, "c");
  EXPECT_EQ(snapshot.selectionLength, 2);
  EXPECT_EQ(snapshot.caretRect, window.shown.caretRect);
  EXPECT_EQ(snapshot.windowTitle, "Try it");
  window.shown = {u"", {7, 3}, {}, {}, {}, {}, ""};
  EXPECT_EQ(source.snapshot()->selectionLength, 0);
}

TEST(SourceSwitch, FollowsThePracticeFieldWhileItHasTheFocus) {
  Others others;
  Window window;
  PracticeFieldSource practice(window, "org.nimbletype");
  std::vector<std::string> heard;  // where each change was told from
  SourceSwitch sources(others);
  sources.onChange([&](Change) { heard.push_back(sources.snapshot()->bundleID); });
  const auto take = [&] { return std::exchange(heard, {}); };

  sources.setPracticeField(practice);
  others.changed(Change::value);
  EXPECT_THAT(take(), ElementsAre("org.other"));
  practice.valueChanged();
  EXPECT_THAT(take(), IsEmpty());
  practice.focusChanged(true);
  practice.focusChanged(true);
  EXPECT_THAT(take(), ElementsAre("org.nimbletype"));
  others.changed(Change::app);
  EXPECT_THAT(take(), IsEmpty());
  practice.valueChanged();
  EXPECT_THAT(take(), ElementsAre("org.nimbletype"));
  sources.insert("word", InsertionMethod::paste);
  sources.deleteBackwards(2);
  EXPECT_THAT(window.inserted, ElementsAre("word"));
  EXPECT_EQ(window.deleted, 2);

  practice.focusChanged(false);
  EXPECT_THAT(take(), ElementsAre("org.other"));
  sources.insert("word", InsertionMethod::typing);
  EXPECT_THAT(others.inserted, ElementsAre("word"));
  practice.focusChanged(true);
  take();
  sources.takeAway(practice);
  EXPECT_THAT(take(), ElementsAre("org.other"));
  practice.valueChanged();
  EXPECT_THAT(take(), IsEmpty());
}

}  // namespace
}  // namespace nimbletype
