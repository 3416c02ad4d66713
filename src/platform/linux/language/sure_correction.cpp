#include "platform/linux/language/sure_correction.h"

#include <algorithm>
#include <string>
#include <vector>

#include "text/text.h"

namespace nimbletype {
namespace {

using Letters = std::vector<std::string_view>;

bool isExchange(const Letters& a, const Letters& b) {
  if (a.size() != b.size()) return false;
  const auto [first, other] = std::mismatch(a.begin(), a.end(), b.begin());
  return first != a.end() && first + 1 != a.end() && first[0] == other[1] && first[1] == other[0] &&
         std::equal(first + 2, a.end(), other + 2);
}

// `longer` has one letter more, which doubles its neighbour; not at the end, where more letters may yet
// follow.
bool isDoubling(const Letters& shorter, const Letters& longer) {
  if (longer.size() != shorter.size() + 1) return false;
  const auto [first, other] = std::mismatch(shorter.begin(), shorter.end(), longer.begin());
  return first != shorter.end() && first != shorter.begin() && *other == *(other - 1) &&
         std::equal(first, shorter.end(), other + 1);
}

// "doesnt" for "doesn't".
bool lacksApostrophe(std::string_view word, const Letters& meant) {
  std::string bare;
  for (std::string_view letter : meant)
    if (letter != "'") bare += letter;
  return bare == word;
}

}  // namespace

bool isSureCorrection(std::string_view word, std::string_view suggestion) {
  const Letters typed = text::characters(word), meant = text::characters(suggestion);
  return isExchange(typed, meant) || isDoubling(typed, meant) || isDoubling(meant, typed) ||
         lacksApostrophe(word, meant);
}

}  // namespace nimbletype
