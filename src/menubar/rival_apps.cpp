#include "menubar/rival_apps.h"

#include <algorithm>
#include <array>

#include "text/text.h"

namespace nimbletype {
namespace {

constexpr std::string_view rivalPrefix = "app.cotypist.";
constexpr std::array<std::string_view, 7> rivalNames{"cotypist", "tabtype",  "tabtabtab", "friendware",
                                                     "cotabby",  "typeseer", "inlineai"};

// "tabtype" of "Tab Type": letters and digits alone, in lower case.
std::string bareName(std::string_view name) {
  const std::string lowered = text::lowercased(name);
  std::string bare;
  for (const std::string_view character : text::characters(lowered))
    if (text::isLetter(character) || text::isDigit(character)) bare += character;
  return bare;
}

}  // namespace

bool RivalApps::isRival(std::string_view bundleIdentifier, std::string_view localizedName) const {
  if (!bundleIdentifier.empty()) {
    if (bundleIdentifier == own_) return false;
    if (bundleIdentifier.starts_with(rivalPrefix)) return true;
  }
  return std::ranges::count(rivalNames, bareName(localizedName)) > 0;
}

}  // namespace nimbletype
