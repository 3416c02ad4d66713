#include "input/field/field_role.h"

#include <algorithm>
#include <array>

namespace nimbletype {
namespace {

constexpr std::string_view secureRole = "AXSecureTextField";
constexpr std::array<std::string_view, 4> textRoles{"AXTextField", "AXTextArea", "AXComboBox",
                                                    "AXSearchField"};

std::string reason(std::string_view app, std::string_view role, std::string_view ending) {
  std::string text(app.empty() ? "no app" : app);
  text += ": focused ";
  text += role;
  text += ending;
  return text;
}

}  // namespace

bool isSecureRole(std::string_view role) {
  return role == secureRole;
}

FieldRole fieldRole(std::string_view role) {
  if (isSecureRole(role)) return FieldRole::secureField;
  if (std::ranges::find(textRoles, role) != textRoles.end()) return FieldRole::field;
  return role == "AXStaticText" ? FieldRole::notAField : FieldRole::dependsOnValue;
}

namespace no_field {

std::string nothingFocused(std::string_view app) {
  return std::string(app.empty() ? "no app" : app) + ": nothing focused";
}
std::string notATextField(std::string_view app, std::string_view role) {
  return reason(app, role, " isn't a text field");
}
std::string noCaretPosition(std::string_view app, std::string_view role) {
  return reason(app, role, " has no caret position");
}
std::string keepsItsText(std::string_view app, std::string_view role) {
  return reason(app, role, " won't share its text");
}
std::string pinnedNotFound(std::string_view note) {
  return " (pinned box not found: " + std::string(note) + ")";
}

}  // namespace no_field
}  // namespace nimbletype
