#include "input/field/field_role.h"

#include <gtest/gtest.h>

#include <map>

namespace nimbletype {
namespace {

TEST(FieldRole, TellsFieldsFromTheRest) {
  const std::map<std::string, FieldRole> roles{
      {"AXSecureTextField", FieldRole::secureField},
      {"AXTextField", FieldRole::field},
      {"AXTextArea", FieldRole::field},
      {"AXComboBox", FieldRole::field},
      {"AXSearchField", FieldRole::field},
      {"AXStaticText", FieldRole::notAField},
      {"AXGroup", FieldRole::dependsOnValue},
      {"AXWebArea", FieldRole::dependsOnValue},
      {"", FieldRole::dependsOnValue},
  };
  for (const auto& [role, expected] : roles) EXPECT_EQ(fieldRole(role), expected) << role;
}

TEST(FieldRole, SaysWhyThereIsNoField) {
  EXPECT_EQ(no_field::nothingFocused(""), "no app: nothing focused");
  EXPECT_EQ(no_field::notATextField("org.app", "AXButton"), "org.app: focused AXButton isn't a text field");
  EXPECT_EQ(no_field::noCaretPosition("org.app", "AXTextArea"),
            "org.app: focused AXTextArea has no caret position");
  EXPECT_EQ(no_field::keepsItsText("", "AXSecureTextField"),
            "no app: focused AXSecureTextField won't share its text");
}

}  // namespace
}  // namespace nimbletype
