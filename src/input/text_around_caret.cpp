#include "input/text_around_caret.h"

#include <algorithm>

#include "text/text.h"

namespace nimbletype {
namespace {

// Longer than all but freak characters, such as a family of emoji.
constexpr std::int64_t margin = 32;

std::int64_t unitsOf(std::string_view s) {
  return static_cast<std::int64_t>(text::utf16Length(s));
}

}  // namespace

TextRange rangeBefore(const TextRange& selection) {
  const std::int64_t start = std::max<std::int64_t>(0, selection.location - mostBefore - margin);
  return {start, selection.location - start};
}

TextRange rangeAfter(const TextRange& selection, std::optional<std::int64_t> count) {
  const std::int64_t start = selection.location + selection.length;
  const std::int64_t rest = count ? std::max<std::int64_t>(0, *count - start) : mostAfter;
  return {start, std::min(rest, mostAfter + margin)};
}

std::string endOfText(std::string_view text, std::int64_t units) {
  for (std::int64_t length = unitsOf(text); length > units;) {
    const std::string_view first = text::firstCharacter(text);
    length -= unitsOf(first);
    text.remove_prefix(first.size());
  }
  return std::string(text);
}

std::string startOfText(std::string_view text, std::int64_t units) {
  for (std::int64_t length = unitsOf(text); length > units;) {
    const std::string_view last = text::lastCharacter(text);
    length -= unitsOf(last);
    text.remove_suffix(last.size());
  }
  return std::string(text);
}

std::optional<std::int64_t> paragraphStart(std::string_view before, std::int64_t caret) {
  const std::size_t lineBreak = before.find_last_of("\n\r");
  if (lineBreak != std::string_view::npos) return caret - unitsOf(before.substr(lineBreak + 1));
  if (unitsOf(before) == caret) return 0;
  return std::nullopt;
}

bool endsInLineBreak(std::string_view text) {
  return text::isLineBreak(text::lastCharacter(text));
}

}  // namespace nimbletype
