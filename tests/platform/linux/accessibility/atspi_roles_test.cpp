#include "platform/linux/accessibility/tree/atspi_roles.h"

#include <gtest/gtest.h>

namespace nimbletype {
namespace {

constexpr std::uint32_t text = 61, entry = 79, comboBox = 11, paragraph = 73, documentWeb = 95, button = 43,
                        terminal = 60, label = 29, section = 85, panel = 39, toolBar = 63;

AtspiStates states(std::initializer_list<unsigned> set) {
  AtspiStates result;
  for (const unsigned state : set) result.bits |= std::uint64_t{1} << state;
  return result;
}

TEST(AtspiRoles, AreNamedAsTheCoreNamesThem) {
  using namespace atspi_state;
  struct Case {
    std::uint32_t role;
    AtspiStates states;
    std::string_view expected;
  };
  for (const auto& c : {
           Case{text, states({editable, multiLine}), "AXTextArea"},
           Case{text, states({editable, singleLine}), "AXTextField"},
           Case{text, states({editable}), "AXTextField"},  // Qt's line editor has neither line state
           Case{text, states({multiLine}), "AXStaticText"},
           Case{entry, states({editable, multiLine}), "AXTextArea"},
           Case{entry, states({editable}), "AXTextField"},
           Case{comboBox, states({editable, singleLine}), "AXComboBox"},
           Case{comboBox, states({}), "AXComboBox"},
           Case{paragraph, states({editable}), "AXTextArea"},
           Case{section, states({editable}), "AXTextArea"},
           Case{atspi_role::passwordText, states({editable, singleLine}), "AXSecureTextField"},
           Case{terminal, states({}), "AXTextArea"},
           Case{documentWeb, states({}), "AXWebArea"},
           Case{label, states({}), "AXStaticText"},
           Case{paragraph, states({}), "AXStaticText"},
           Case{toolBar, states({}), "AXToolbar"},
           Case{button, states({focused}), "AXButton"},
           Case{panel, states({focused}), "AXGroup"},
       })
    EXPECT_EQ(accessibilityRole(c.role, c.states), c.expected) << c.role;
}

}  // namespace
}  // namespace nimbletype
