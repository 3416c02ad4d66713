#include <gtest/gtest.h>

#include "platform/linux/accessibility/atspi_scale.h"
#include "platform/linux/accessibility/text/atspi_offsets.h"
#include "platform/linux/accessibility/tree/atspi_roles.h"
#include "text/text.h"

namespace nimbletype {
namespace {

constexpr std::uint32_t text = 61, entry = 79, comboBox = 11, paragraph = 73, documentWeb = 95, button = 43,
                        terminal = 60, label = 29, section = 85, panel = 39, toolBar = 63;

TEST(AtspiRoles, AreNamedAsTheCoreNamesThem) {
  using namespace atspi_state;
  const struct {
    std::uint32_t role;
    std::vector<unsigned> states;
    std::string_view expected;
  } cases[] = {
      {text, {editable, multiLine}, "AXTextArea"},
      {text, {editable, singleLine}, "AXTextField"},
      {text, {editable}, "AXTextField"},  // Qt's line editor has neither line state
      {text, {multiLine}, "AXStaticText"},
      {entry, {editable, multiLine}, "AXTextArea"},
      {entry, {editable}, "AXTextField"},
      {comboBox, {editable, singleLine}, "AXComboBox"},
      {comboBox, {}, "AXComboBox"},
      {paragraph, {editable}, "AXTextArea"},
      {section, {editable}, "AXTextArea"},
      {atspi_role::passwordText, {editable, singleLine}, "AXSecureTextField"},
      {terminal, {}, "AXTextArea"},
      {documentWeb, {}, "AXWebArea"},
      {label, {}, "AXStaticText"},
      {paragraph, {}, "AXStaticText"},
      {toolBar, {}, "AXToolbar"},
      {button, {focused}, "AXButton"},
      {panel, {focused}, "AXGroup"},
  };
  for (const auto& c : cases) {
    AtspiStates states;
    for (const unsigned state : c.states) states.bits |= std::uint64_t{1} << state;
    EXPECT_EQ(accessibilityRole(c.role, states), c.expected) << c.role;
  }
}

TEST(AtspiScale, IsARatioThatApplicationsAreScaledBy) {
  const struct {
    const char* what;
    double pixels, told, scale;
  } cases[] = {
      {"the same", 760, 760, 1},
      {"twice, with a window manager's borders", 1120, 562, 2},
      {"one and a half", 900, 600, 1.5},
      {"shadows that only the window has", 652, 600, 1},
      {"borders that only the application counts", 760, 764, 1},
      {"smaller than told", 380, 760, 1},
      {"nothing told", 760, 0, 1},
  };
  for (const auto& c : cases) EXPECT_EQ(applicationScale(c.pixels, c.told), c.scale) << c.what;
}

TEST(AtspiOffsets, CountsWideCharactersTwice) {
  const AtspiOffsets offsets(100, "é😀日👍🏽x"), utf16;
  const std::pair<std::int64_t, std::int64_t> cases[] = {
      {0, 0}, {100, 100}, {101, 101}, {102, 103}, {103, 104}, {104, 106}, {105, 108}, {106, 109}, {500, 503}};
  for (const auto& [own, wide] : cases) {
    EXPECT_EQ(offsets.toUtf16(own), wide) << own;
    EXPECT_EQ(offsets.fromUtf16(wide), own) << wide;
    EXPECT_EQ(offsets.endFromUtf16(wide), own) << wide;
  }
  EXPECT_EQ(utf16.toUtf16(7), 7);
  EXPECT_EQ(utf16.fromUtf16(7), 7);
  EXPECT_EQ(utf16.endFromUtf16(7), 7);
  // A unit inside a character stands for all of it.
  EXPECT_EQ(offsets.fromUtf16(102), 101);
  EXPECT_EQ(offsets.endFromUtf16(102), 102);
}

}  // namespace
}  // namespace nimbletype
