#include "input/field/text_around_caret.h"

#include <algorithm>
#include <limits>

#include "text/text.h"

namespace nimbletype {
namespace {

// Longer than all but freak characters, such as a family of emoji.
constexpr std::int64_t margin = 32;
constexpr std::int64_t longestText = std::numeric_limits<std::int32_t>::max();

std::int64_t unitsOf(std::string_view s) {
  return static_cast<std::int64_t>(text::utf16Length(s));
}

}  // namespace

std::optional<std::int64_t> characterCount(std::optional<double> told) {
  if (!told || !(*told >= 0 && *told <= static_cast<double>(longestText))) return std::nullopt;
  return static_cast<std::int64_t>(*told);
}

// A caret in a text of no length: the length is what is wrong.
TextRange validSelection(const TextRange& told, std::optional<std::int64_t> count) {
  const std::int64_t end = count.value_or(0) > 0 ? *count : longestText;
  const std::int64_t start = std::clamp<std::int64_t>(told.location, 0, end);
  return {start, std::clamp<std::int64_t>(told.length, 0, end - start)};
}

TextRange rangeBefore(const TextRange& selection) {
  const std::int64_t start = std::max<std::int64_t>(0, selection.location - mostBefore - margin);
  return {start, selection.location - start};
}

TextRange rangeAfter(const TextRange& selection, std::optional<std::int64_t> count) {
  const std::int64_t start = selection.location + selection.length;
  const bool known = count && (*count > 0 || start == 0);
  const std::int64_t rest = known ? std::max<std::int64_t>(0, *count - start) : mostAfter;
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
