#include "overlay/emoji/emoji_index.h"

#include <gmock/gmock.h>

#include "overlay/emoji/emoji_picker_panel.h"
#include "platform/scripted/desktop/scripted_screens.h"
#include "platform/scripted/drawing/fixed_font_metrics.h"
#include "platform/scripted/drawing/recording_overlay_surface.h"

namespace nimbletype {
namespace {

using testing::Contains;
using testing::ElementsAre;
using Texts = std::vector<std::string>;

Texts emojiOf(const std::vector<EmojiItem>& items) {
  Texts texts;
  for (const EmojiItem& item : items) texts.push_back(item.emoji);
  return texts;
}

TEST(EmojiIndex, ScoresByHowMuchOfWhichNameMatches) {
  EmojiIndex index;
  const std::pair<int, std::vector<std::pair<const char*, const char*>>> table[] = {
      {1000,
       {{"rocket", "🚀"},
        {"ROCKET", "🚀"},
        {"cake", "🎂"},
        {"+1", "👍"},
        {"-1", "👎"},
        {"crying_face", "😢"},
        {"heart", "❤️"},
        {"sweat_smile", "😅"},
        {"warning", "⚠️"}}},
      {500, {{"ro", "🚀"}}},
      {400, {{"ro", "🌹"}, {"thumbs_up", "👍"}, {"with_tears", "😂"}}},
      {150, {{"cak", "🥞"}}},
      {0, {{"ca", "🥞"}, {"rocketx", "🚀"}, {"🚀", "🚀"}, {"", "🚀"}}}};
  for (const auto& [expected, queries] : table)
    for (const auto& [query, emoji] : queries) {
      int found = 0;
      for (const auto& [item, score] : index.matches(query))
        if (item->emoji == emoji) found = score;
      EXPECT_EQ(found, expected) << query << emoji;
    }
}

TEST(EmojiIndex, ListsTheBestFirstAndTheFrequentAmongEquals) {
  EmojiIndex index;
  EXPECT_EQ(index.search("rocket").front().emoji, "🚀");
  EXPECT_THAT(emojiOf(index.search("ro", 3)), ElementsAre("🚀", "🤣", "🌹"));
  const Texts hands = emojiOf(index.search("person"));
  EXPECT_EQ(hands.front(), "🙏") << "frequent, so before earlier ones of the same score";
  const Texts all = emojiOf(index.search("th"));
  EXPECT_EQ(std::ranges::count(all, "👍"), 1) << "reached by shortcut and by name";
  EXPECT_THAT(emojiOf(index.frequent()), ElementsAre("👍", "🙏", "😊", "🔥", "🎉", "😍"));
}

TEST(EmojiIndex, HoldsWhatIsDrawnAsAnEmoji) {
  EmojiIndex index;
  const Texts all = emojiOf(index.entries());
  for (const char* emoji : {"☀️", "⚠️", "⭐", "⌚", "🚀", "🫠", "🦾"}) EXPECT_THAT(all, Contains(emoji));
  for (const char* other : {"☀", "🏻", "🏽", "★", "a"}) EXPECT_EQ(std::ranges::count(all, other), 0) << other;
  const auto& sun = *std::ranges::find(index.entries(), "☀️", &EmojiItem::emoji);
  EXPECT_EQ(sun.name, "black sun with rays");
  EXPECT_THAT(sun.words, ElementsAre("black", "sun", "with", "rays"));
}

TEST(EmojiIndex, KnowsEmoticonsToTheLetter) {
  const std::pair<const char*, Texts> cases[] = {
      {":p", {"😛"}}, {":P", {"😛", "😜"}}, {"</3", {"💔"}}, {"<3", {"❤️", "🥰"}},
      {":|", {"😐"}}, {":d", {}},           {":", {}},       {"", {}},
      {" :)", {}}};
  for (const auto& [text, emoji] : cases) EXPECT_EQ(EmojiIndex::emoticon(text), emoji) << text;
}

TEST(EmojiIndex, PutsTheToneAfterTheBase) {
  EmojiIndex index;
  const EmojiItem up = index.search("thumbsup").front(), point = index.search("point_up").front(),
                  rocket = index.search("rocket").front();
  EXPECT_EQ(EmojiIndex::apply(3, up), "👍🏽");
  EXPECT_EQ(EmojiIndex::apply(1, point), "☝🏻") << "without the selector";
  EXPECT_EQ(EmojiIndex::apply(5, rocket), "🚀");
  for (const SkinTone none : {0, -1, 6}) EXPECT_EQ(EmojiIndex::apply(none, up), "👍");
  EXPECT_THAT(emojiOf(inTone({up, rocket}, 2, true)), ElementsAre("👍🏼", "👍", "🚀"));
  EXPECT_THAT(emojiOf(inTone({up, rocket}, 2, false)), ElementsAre("👍🏼", "🚀"));
  EXPECT_THAT(emojiOf(inTone({up}, 0, true)), ElementsAre("👍"));
}

TEST(EmojiPicker, StaysWhereItOpenedWhileTheWordGoesOn) {
  EmojiIndex index;
  RecordingOverlaySurface surface;
  ScriptedScreens screens;
  const FixedFontMetrics metrics;
  EmojiPickerPanel panel({surface, screens, metrics});
  panel.show(index.search("ro", 3), ":ro", {500, 600, 1, 18});
  const auto frame = surface.shown->frame;
  panel.moveSelection(-1);
  EXPECT_EQ(panel.choose(), "🌹");
  panel.show(index.search("roc", 3), ":roc", {507, 600, 1, 18});
  EXPECT_EQ(surface.shown->frame, frame);
  EXPECT_EQ(panel.model()->selected, 0U) << "another list";
  panel.show(index.search("roc", 3), ":roc", {20, 582, 1, 18});
  EXPECT_NE(surface.shown->frame, frame) << "the word was wrapped onto the next line";
  panel.show({}, ":rocq", {27, 582, 1, 18});
  EXPECT_THAT(surface.texts(), ElementsAre("No emoji match “rocq”"));
  EXPECT_EQ(panel.choose(), std::nullopt);
}

}  // namespace
}  // namespace nimbletype
