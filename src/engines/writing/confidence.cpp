#include "engines/writing/confidence.h"

#include <algorithm>
#include <cmath>

#include "text/text.h"

namespace nimbletype {
namespace {

// Less than this below the largest, an exponential no longer changes a sum of single-precision numbers.
constexpr float negligible = 30;

bool beginsInsideWord(std::string_view addition) {
  const auto first = text::firstCharacter(addition);
  return text::isLetter(first) || text::isDigit(first);
}

// `s` without the run of non-whitespace at its end.
std::string_view withoutLastWord(std::string_view s) {
  while (!s.empty()) {
    const auto last = text::lastCharacter(s);
    if (text::isWhitespace(last)) break;
    s.remove_suffix(last.size());
  }
  return s;
}

}  // namespace

double logSumExp(std::span<const float> logits) {
  if (logits.empty()) return 0;
  const float largest = *std::ranges::max_element(logits);
  const float floor = largest - negligible;
  double sum = 0;
  for (const float logit : logits)
    if (logit > floor) sum += std::exp(logit - largest);
  return largest + std::log(sum);
}

std::size_t confidentLength(std::string_view before, std::string_view after) {
  if (!after.starts_with(before)) return after.size();
  if (!beginsInsideWord(after.substr(before.size()))) return before.size();
  const auto kept = withoutLastWord(before);
  return text::isBlank(kept) ? before.size() : kept.size();
}

}  // namespace nimbletype
