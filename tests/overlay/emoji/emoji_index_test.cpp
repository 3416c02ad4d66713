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

int scoreOf(EmojiIndex& index, std::string_view query, std::string_view emoji) {
  for (const auto& [item, score] : index.matches(query))
    if (item->emoji == emoji) return score;
  return 0;
}

TEST(EmojiIndex, ScoresByHowMuchOfWhichNameMatches) {
  EmojiIndex index;
  struct Case {
    const char *query, *emoji;
    int score;
  };
  const Case cases[] = {{"rocket", "🚀", 1000},
                        {"ROCKET", "🚀", 1000},
                        {"ro", "🚀", 500},
                        {"ro", "🌹", 400},
                        {"ca", "🥞", 0},
                        {"cak", "🥞", 150},
                        {"cake", "🎂", 1000},
                        {"+1", "👍", 1000},
                        {"-1", "👎", 1000},
                        {"thumbs_up", "👍", 400},
                        {"crying_face", "😢", 1000},
                        {"with_tears", "😂", 400},
                        {"heart", "❤️", 1000},
                        {"sweat_smile", "😅", 1000},
                        {"warning", "⚠️", 1000},
                        {"rocketx", "🚀", 0},
                        {"🚀", "🚀", 0},
                        {"", "🚀", 0}};
  for (const Case& c : cases) EXPECT_EQ(scoreOf(index, c.query, c.emoji), c.score) << c.query << c.emoji;
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
