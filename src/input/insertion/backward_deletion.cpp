#include "input/insertion/backward_deletion.h"

#include <algorithm>

#include "input/field/ax_element.h"
#include "text/text.h"

namespace nimbletype {
namespace {

// The longest characters in use, families and flags, have about half as many.
constexpr std::int64_t longestCharacter = 32;  // UTF-16 units

bool areSingleCodePoints(std::string_view characters) {
  const auto continues = [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; };
  const auto codePoints =
      characters.size() - static_cast<std::size_t>(std::ranges::count_if(characters, continues));
  return codePoints == text::characterCount(characters);
}

}  // namespace

bool deleteThroughAccessibility(Accessibility& accessibility, const ObjectRef& element, int count) {
  const AXElement field(accessibility, element);
  const auto selection = field.range("AXSelectedTextRange");
  if (!selection || selection->length > 0) return false;
  const std::int64_t caret = selection->location, reach = std::min(caret, count * longestCharacter);
  const auto before = field.text({caret - reach, reach});
  if (!before) return false;
  const std::string_view doomed = text::lastCharacters(*before, static_cast<std::size_t>(count));
  if (areSingleCodePoints(doomed)) return false;

  const auto units = static_cast<std::int64_t>(text::utf16Length(doomed));
  const TextRange range{caret - units, units};
  if (!accessibility.write(element, "AXSelectedTextRange", range)) return false;
  // Some applications accept a selection without making it.
  if (field.range("AXSelectedTextRange") == range &&
      accessibility.write(element, "AXSelectedText", std::string()))
    return true;
  accessibility.write(element, "AXSelectedTextRange", *selection);
  return false;
}

}  // namespace nimbletype
