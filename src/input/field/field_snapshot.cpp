#include "input/field/field_snapshot.h"

#include <algorithm>
#include <array>

#include "text/text.h"

namespace nimbletype {
namespace {

constexpr std::array<std::string_view, 18> lineFinishers{".", "!", "?", ",",  ":",  ";",  ")",  "]",  "\"",
                                                         "”", "’", "…", "。", "！", "？", "，", "：", "、"};

template <typename Matches>
std::string_view withoutEnd(std::string_view s, Matches matches) {
  for (auto last = text::lastCharacter(s); !last.empty() && matches(last); last = text::lastCharacter(s))
    s.remove_suffix(last.size());
  return s;
}

bool isSpace(std::string_view character) {
  return text::isWhitespace(character) && !text::isLineBreak(character);
}

}  // namespace

std::string_view FieldSnapshot::restOfLine() const {
  const std::string_view rest = after;
  return rest.substr(0, rest.find_first_of("\r\n"));
}

bool FieldSnapshot::isAtTextEnd() const {
  return text::isBlank(after);
}

bool FieldSnapshot::followsFinishedLine() const {
  const auto line = withoutEnd(before, text::isLineBreak);
  if (line.size() == before.size()) return false;
  const auto end = text::lastCharacter(withoutEnd(line, isSpace));
  return std::ranges::find(lineFinishers, end) != lineFinishers.end();
}

bool holdsSameText(const FieldSnapshot& a, const FieldSnapshot& b) {
  return a.fieldKey == b.fieldKey && a.selectionLength == b.selectionLength && a.before == b.before &&
         a.after == b.after;
}

}  // namespace nimbletype
