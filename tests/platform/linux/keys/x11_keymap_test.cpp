#include "platform/linux/keys/x11_keymap.h"

#include <gtest/gtest.h>

#include <set>

namespace nimbletype {
namespace {

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
