#include "core/completion/showing/suggestion.h"

#include <algorithm>

#include "text/text.h"

namespace nimbletype {
namespace {

constexpr std::size_t anchorCharacters = 48;

bool isWordCharacter(std::string_view c) {
  return text::isLetter(c) || text::isDigit(c) || c == "'" || c == "’" || c == "-" || c == "_";
}

bool isTrailingPunctuation(std::string_view c) {
  constexpr std::string_view set[] = {".", ",", "!", "?", ";", ":", ")", "]", "}", "\"", "”", "’", "…"};
  return std::find(std::begin(set), std::end(set), c) != std::end(set);
}

// The bytes at the start of `rest`, from `at` on, whose characters all satisfy `belongs`.
template <typename Predicate>
std::size_t runEnd(std::string_view rest, std::size_t at, Predicate belongs) {
  while (at < rest.size()) {
    const std::string_view c = text::firstCharacter(rest.substr(at));
    if (!belongs(c)) break;
    at += c.size();
  }
  return at;
}

// Enough of the end of `before` to compare with, at a character's border.
std::string plainEnd(std::string_view before, std::size_t bytes) {
  std::size_t at = before.size() - std::min(before.size(), bytes);
  while (at > 0 && (static_cast<unsigned char>(before[at]) & 0xC0) == 0x80) --at;
  return text::withPlainSpaces(before.substr(at));
}

}  // namespace

std::size_t Suggestion::length() const {
  return text::characterCount(text);
}
std::string_view Suggestion::after(std::size_t count) const {
  return text::dropFirst(text, count);
}

Suggestion makeSuggestion(std::string text, std::string_view before, std::string fieldKey) {
  return {std::move(text), std::string(text::lastCharacters(before, anchorCharacters)), 0, 0,
          std::move(fieldKey)};
}

std::optional<std::size_t> typedOver(const Suggestion& suggestion, std::string_view before) {
  const std::string tail = text::withPlainSpaces(suggestion.anchorTail);
  std::string expected = tail + text::withPlainSpaces(suggestion.text);
  // A no-break space is one byte longer than the space it is compared as.
  const std::string end = plainEnd(before, 2 * expected.size() + 8);
  const auto characters = text::characters(std::string_view(expected).substr(tail.size()));
  std::size_t bytes = expected.size();
  for (std::size_t count = characters.size();; --count) {
    const std::string_view candidate = std::string_view(expected).substr(0, bytes);
    if (tail.empty() ? end == candidate : end.ends_with(candidate)) return count;
    if (count == 0) return std::nullopt;
    bytes -= characters[count - 1].size();
  }
}

std::string_view completeWords(std::string_view growing) {
  std::string_view last = text::lastCharacter(growing);
  while (isWordCharacter(last) && !text::isUnspaced(last)) {
    growing.remove_suffix(last.size());
    last = text::lastCharacter(growing);
  }
  return text::trimmedEnd(growing);
}

std::optional<Suggestion> continued(Suggestion suggestion, std::string text) {
  const std::string_view kept =
      text::firstCharacters(suggestion.text, std::max(suggestion.consumed, suggestion.taken));
  if (!text.starts_with(kept)) return std::nullopt;
  suggestion.text = std::move(text);
  return suggestion;
}

std::string_view nextChunk(std::string_view rest, bool trailingSpace, bool trailingPunctuation) {
  std::size_t end = runEnd(rest, 0, text::isWhitespace);
  if (isWordCharacter(text::firstCharacter(rest.substr(end))))
    end = runEnd(rest, end, isWordCharacter);
  else
    end = runEnd(rest, end, [](std::string_view c) { return !text::isWhitespace(c) && !isWordCharacter(c); });
  if (trailingPunctuation) end = runEnd(rest, end, isTrailingPunctuation);
  if (trailingSpace && end < rest.size() && rest[end] == ' ') ++end;
  return rest.substr(0, end);
}

}  // namespace nimbletype
