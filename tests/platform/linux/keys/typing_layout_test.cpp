#include "platform/linux/keys/typing_layout.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <xkbcommon/xkbcommon.h>

namespace nimbletype {
namespace {

using testing::ElementsAre;
using testing::Pair;

constexpr std::uint16_t shift = XCB_MOD_MASK_SHIFT, third = XCB_MOD_MASK_5;

// A keyboard of two groups and up to four levels, from key code 10 on.
struct TwoGroups {
  static constexpr std::size_t columns = 8;
  std::vector<xcb_keysym_t> symbols{
      // group 1 level 1, 2; group 2 level 1, 2; group 1 level 3, 4; group 2 level 3, 4
      'q',
      'Q',
      XKB_KEY_Cyrillic_shorti,
      XKB_KEY_Cyrillic_SHORTI,
      '@',
      XKB_KEY_Greek_OMEGA,
      0,
      0,
      '1',
      '!',
      '1',
      '!',
      0,
      0,
      0,
      0,
      0,
      0,
      0,
      0,
      0,
      0,
      0,
      0,
      XKB_KEY_Return,
      0,
      XKB_KEY_Return,
      0,
      0,
      0,
      0,
      0,
      XKB_KEY_KP_End,
      XKB_KEY_KP_2,
      0,
      0,
      0,
      0,
      0,
      0,
      XKB_KEY_dead_acute,
      XKB_KEY_dead_grave,
      0,
      0,
      0,
      0,
      0,
      0,
      XKB_KEY_Shift_L,
      0,
      0,
      0,
      0,
      0,
      0,
      0,
      XKB_KEY_ISO_Level3_Shift,
      0,
      0,
      0,
      0,
      0,
      0,
      0,
      0,
      0,
      0,
      0,
      0,
      0,
      0,
      0};
  // One key for each of Shift, Lock, Control and the five others.
  std::vector<xcb_keycode_t> modifierKeys{16, 66, 0, 0, 0, 0, 0, 17};

  TypingLayout layout(unsigned group) const {
    return makeTypingLayout({10, columns, symbols}, modifierKeys, 1, group);
  }
};

TEST(TypingLayout, FindsTheCharactersOfTheActiveGroup) {
  const TypingLayout latin = TwoGroups().layout(0);
  EXPECT_THAT(latin.characters, testing::UnorderedElementsAre(
                                    Pair(U'q', KeyStroke{10, 0}), Pair(U'Q', KeyStroke{10, shift}),
                                    Pair(U'@', KeyStroke{10, third}),
                                    Pair(U'Ω', KeyStroke{10, third | shift}), Pair(U'1', KeyStroke{11, 0}),
                                    Pair(U'!', KeyStroke{11, shift}), Pair(U'\n', KeyStroke{13, 0})));
  const TypingLayout cyrillic = TwoGroups().layout(1);
  EXPECT_EQ(cyrillic.characters.count(U'q'), 0u);
  EXPECT_EQ(cyrillic.characters.at(U'й'), (KeyStroke{10, 0}));
  EXPECT_THAT(TwoGroups().layout(2).characters, testing::IsEmpty());
}

TEST(TypingLayout, KnowsFreeKeysAndModifiersButNoLocks) {
  const TypingLayout layout = TwoGroups().layout(0);
  EXPECT_THAT(layout.freeKeys, ElementsAre(12, 18));
  EXPECT_THAT(layout.modifierKeys, ElementsAre(16, 17));
  EXPECT_EQ(layout.modifierKey[7], 17);
}

TEST(TypingLayout, TypesALineOfItsOwnCharacters) {
  const TypingLayout layout = TwoGroups().layout(0);
  for (std::u16string_view text : {u"", u"q1Q!Ω@"}) EXPECT_TRUE(canType(layout, text));
  for (std::u16string_view text : {u"qé", u"q\n", u"\t", u"👍"}) EXPECT_FALSE(canType(layout, text));
}

TEST(PlanBatch, GivesEachForeignCharacterAKeyOfItsOwn) {
  const TypingLayout layout = TwoGroups().layout(0);
  const KeyStroke enter{36, 0};
  const struct {
    std::vector<Stroke> strokes;
    TypingBatch batch;
  } cases[] = {
      {{}, {}},
      {{U'q', U'Q', enter}, {{}, {{10, 0}, {10, shift}, enter}}},
      {{U'é', U'q', U'é', U'ß'}, {{{12, U'é'}, {18, U'ß'}}, {{12, 0}, {10, 0}, {12, 0}, {18, 0}}}},
      // The third foreign character and all after it have to wait.
      {{U'é', U'ß', U'ü', U'q'}, {{{12, U'é'}, {18, U'ß'}}, {{12, 0}, {18, 0}}}},
  };
  for (const auto& c : cases) EXPECT_EQ(planBatch(c.strokes, layout), c.batch);
}

}  // namespace
}  // namespace nimbletype
