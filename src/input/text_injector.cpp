#include "input/text_injector.h"

#include <string>

#include "text/text.h"

namespace nimbletype {

namespace {

constexpr std::size_t chunkUnits = 20;

bool isHighSurrogate(char16_t unit) {
  return unit >= 0xD800 && unit < 0xDC00;
}

// How much of a character that is longer than a chunk still goes into `room` units.
std::size_t unitsThatFit(std::u16string_view units, std::size_t room) {
  if (units.size() <= room) return units.size();
  return room > 0 && isHighSurrogate(units[room - 1]) ? room - 1 : room;
}

void append(std::vector<std::u16string>& chunks, std::u16string_view character) {
  if (chunks.empty()) chunks.emplace_back();
  if (character.size() <= chunkUnits && chunks.back().size() + character.size() > chunkUnits)
    chunks.emplace_back();
  while (!character.empty()) {
    const std::size_t taken = unitsThatFit(character, chunkUnits - chunks.back().size());
    chunks.back() += character.substr(0, taken);
    character.remove_prefix(taken);
    if (!character.empty()) chunks.emplace_back();
  }
}

}  // namespace

TypedText splitForTyping(std::string_view text) {
  TypedText typed;
  const std::size_t spaces = std::min(text.find_first_not_of(' '), text.size());
  typed.leadingSpaces = spaces;
  text.remove_prefix(spaces);
  for (std::string_view character : text::characters(text)) append(typed.chunks, text::toUtf16(character));
  return typed;
}

void TextInjector::type(std::string_view text) {
  if (text.empty()) return;
  if (!poster_.begin()) {
    log_.log("input", "type: no event source");
    return;
  }
  log_.log("input", "type: " + std::to_string(text::utf16Length(text)) + " units, post access " +
                        (poster_.mayPost() ? "true" : "false"));
  const TypedText typed = splitForTyping(text);
  for (std::size_t i = 0; i < typed.leadingSpaces; ++i) poster_.press(key::space, {});
  for (const std::u16string& chunk : typed.chunks) poster_.type(chunk);
  poster_.end();
}

void TextInjector::write(std::string_view text, const ObjectRef& focusedElement) {
  if (text.empty()) return;
  if (focusedElement && accessibility_.write(focusedElement, "AXSelectedText", std::string(text))) return;
  type(text);
}

void TextInjector::deleteBackwards(int count) {
  if (count <= 0) return;
  if (!poster_.begin()) {
    log_.log("input", "type: no event source");
    return;
  }
  for (int i = 0; i < count; ++i) poster_.press(key::deleteBack, {});
  poster_.end();
}

}  // namespace nimbletype
