#pragma once
#include <string>
#include <string_view>

namespace nimbletype {

// Whether an element of this role takes text. Roles that do not tell count when their value can be set.
enum class FieldRole { field, secureField, notAField, dependsOnValue };
FieldRole fieldRole(std::string_view role);

bool isSecureRole(std::string_view role);

// Why no field can be read, in plain words. `app` is the application's bundle identifier, empty for no
// application.
namespace no_field {
std::string nothingFocused(std::string_view app);
std::string notATextField(std::string_view app, std::string_view role);
std::string noCaretPosition(std::string_view app, std::string_view role);
std::string keepsItsText(std::string_view app, std::string_view role);
// Added to one of them.
std::string pinnedNotFound(std::string_view note);
}  // namespace no_field

}  // namespace nimbletype
