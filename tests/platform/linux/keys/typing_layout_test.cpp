#include "platform/linux/keys/typing_layout.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <xkbcommon/xkbcommon.h>

#include <set>

#include "platform/linux/keys/x11_keymap.h"

namespace nimbletype {
namespace {

using testing::ElementsAre;
using testing::Pair;

constexpr std::uint16_t shift = XCB_MOD_MASK_SHIFT, third = XCB_MOD_MASK_5;

// A keyboard of two groups and up to four levels, from key code 10 on. In a row: group 1 level 1, 2; group 2
// level 1, 2; group 1 level 3, 4; group 2 level 3, 4.
TypingLayout layoutOf(unsigned group) {
  using Row = std::vector<xcb_keysym_t>;
  constexpr std::size_t columns = 8;
  std::vector<xcb_keysym_t> symbols;
  for (Row row : {Row{'q', 'Q', XKB_KEY_Cyrillic_shorti, XKB_KEY_Cyrillic_SHORTI, '@', XKB_KEY_Greek_OMEGA},
                  Row{'1', '!', '1', '!'}, Row{}, Row{XKB_KEY_Return, 0, XKB_KEY_Return},
                  Row{XKB_KEY_KP_End, XKB_KEY_KP_2}, Row{XKB_KEY_dead_acute, XKB_KEY_dead_grave},
                  Row{XKB_KEY_Shift_L}, Row{XKB_KEY_ISO_Level3_Shift}, Row{}}) {
    row.resize(columns);
    symbols.insert(symbols.end(), row.begin(), row.end());
  }
  // One key for each of Shift, Lock, Control and the five others.
  const std::vector<xcb_keycode_t> modifierKeys{16, 66, 0, 0, 0, 0, 0, 17};
  return makeTypingLayout({10, columns, symbols}, modifierKeys, 1, group);
}

TEST(TypingLayout, FindsTheCharactersOfTheActiveGroup) {
  const TypingLayout latin = layoutOf(0);
  EXPECT_THAT(latin.characters, testing::UnorderedElementsAre(
                                    Pair(U'q', KeyStroke{10, 0}), Pair(U'Q', KeyStroke{10, shift}),
                                    Pair(U'@', KeyStroke{10, third}),
                                    Pair(U'Ω', KeyStroke{10, third | shift}), Pair(U'1', KeyStroke{11, 0}),
                                    Pair(U'!', KeyStroke{11, shift}), Pair(U'\n', KeyStroke{13, 0})));
  const TypingLayout cyrillic = layoutOf(1);
  EXPECT_EQ(cyrillic.characters.count(U'q'), 0u);
  EXPECT_EQ(cyrillic.characters.at(U'й'), (KeyStroke{10, 0}));
  EXPECT_THAT(layoutOf(2).characters, testing::IsEmpty());
}

TEST(TypingLayout, KnowsFreeKeysAndModifiersButNoLocks) {
  const TypingLayout layout = layoutOf(0);
  EXPECT_THAT(layout.freeKeys, ElementsAre(12, 18));
  EXPECT_THAT(layout.modifierKeys, ElementsAre(16, 17));
  EXPECT_EQ(layout.modifierKey[7], 17);
}

TEST(TypingLayout, TypesALineOfItsOwnCharacters) {
  const TypingLayout layout = layoutOf(0);
  for (std::u16string_view text : {u"", u"q1Q!Ω@"}) EXPECT_TRUE(canType(layout, text));
  for (std::u16string_view text : {u"qé", u"q\n", u"\t", u"👍"}) EXPECT_FALSE(canType(layout, text));
}

TEST(PlanBatch, GivesEachForeignCharacterAKeyOfItsOwn) {
  const TypingLayout layout = layoutOf(0);
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

TEST(X11Keymap, NamesPlacesOnTheKeyboard) {
  const struct {
    xcb_keycode_t x;
    std::uint16_t product;
  } cases[] = {{23, key::tab},         {49, key::aboveTab}, {9, key::escape},     {65, key::space},
               {22, key::deleteBack},  {55, key::v},        {36, key::returnKey}, {113, key::leftArrow},
               {114, key::rightArrow}, {111, key::upArrow}, {116, key::downArrow}};
  for (const auto& c : cases) {
    EXPECT_EQ(productKeyCode(c.x), c.product);
    EXPECT_EQ(xKeycode(c.product), c.x);
  }
}

TEST(X11Keymap, EveryKeyHasACodeOfItsOwnAndTheWayBack) {
  std::set<std::uint16_t> seen;
  for (int x = 8; x < 256; ++x) {
    const std::uint16_t product = productKeyCode(static_cast<xcb_keycode_t>(x));
    EXPECT_TRUE(seen.insert(product).second) << x;
    EXPECT_EQ(xKeycode(product), x);
  }
  EXPECT_EQ(xKeycode(127), std::nullopt);
  EXPECT_EQ(xKeycode(4000), std::nullopt);
}

TEST(X11Keymap, TranslatesModifiers) {
  const X11Modifiers modifiers{
      .command = XCB_MOD_MASK_4, .option = XCB_MOD_MASK_1, .numLock = XCB_MOD_MASK_2};
  for (std::uint8_t bits = 0; bits < 16; ++bits) {
    const std::uint16_t mask = modifiers.mask({bits});
    for (std::uint16_t locked : modifiers.lockVariants(mask))
      EXPECT_EQ(modifiers.modifierSet(locked).rawValue, bits);
  }
  EXPECT_EQ(modifiers.modifierSet(XCB_MOD_MASK_4 | XCB_MOD_MASK_1).rawValue, 3);
  EXPECT_EQ(modifiers.lockVariants(0).size(), 4u);
  EXPECT_EQ((X11Modifiers{.numLock = 0}.lockVariants(0).size()), 2u);
}

}  // namespace
}  // namespace nimbletype
