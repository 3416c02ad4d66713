#include "input/insertion/text_injector.h"

#include <string>

#include "input/insertion/backward_deletion.h"
#include "text/text.h"

namespace nimbletype {

namespace {

constexpr std::size_t chunkUnits = 20;
constexpr Milliseconds keysOnTheirWay{250};

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

TextInjector::TextInjector(const Services& services)
    : s_(services),
      paster_({s_.pasteboard, s_.poster, s_.loop, s_.log}, [this](const std::string& text, const auto&) {
        if (beginKeys()) pressKeys(text);
      }) {}

void TextInjector::type(std::string_view text, const InsertionTarget& target) {
  if (text.empty()) return;
  if (paster_.isBusy()) return paste(text, target);
  if (!beginKeys()) return;
  if (s_.poster.suits(text::toUtf16(text))) return pressKeys(text);
  s_.poster.end();
  if (!writeTo(target.element, text)) paste(text, target);
}

void TextInjector::write(std::string_view text, const InsertionTarget& target) {
  if (text.empty()) return;
  if (!writeTo(target.element, text)) type(text, target);
}

void TextInjector::paste(std::string_view text, const InsertionTarget& target) {
  paster_.paste(text, target);
}

void TextInjector::deleteBackwards(int count, const InsertionTarget& target) {
  if (count <= 0) return;
  const bool mayWrite = target.element && !isBehindKeys();
  if (mayWrite && deleteThroughAccessibility(s_.accessibility, target.element, count)) return;
  if (!beginKeys()) return;
  for (int i = 0; i < count; ++i) s_.poster.press(key::deleteBack, {});
  endKeys();
}

bool TextInjector::beginKeys() {
  const bool begun = s_.poster.begin();
  if (!begun) s_.log.log("input", "type: no event source");
  return begun;
}

void TextInjector::endKeys() {
  s_.poster.end();
  keysAt_ = s_.loop.now();
}

void TextInjector::pressKeys(std::string_view text) {
  s_.log.log("input", "type: " + std::to_string(text::utf16Length(text)) + " units, post access " +
                          (s_.poster.mayPost() ? "true" : "false"));
  const TypedText typed = splitForTyping(text);
  for (std::size_t i = 0; i < typed.leadingSpaces; ++i) s_.poster.press(key::space, {});
  for (const std::u16string& chunk : typed.chunks) s_.poster.type(chunk);
  endKeys();
}

// Whether keys may still be on their way to the application; what is written reaches it at once.
bool TextInjector::isBehindKeys() const {
  return paster_.isBusy() || (keysAt_ && s_.loop.now() - *keysAt_ < keysOnTheirWay);
}

bool TextInjector::writeTo(const ObjectRef& element, std::string_view text) {
  if (!element || isBehindKeys()) return false;
  if (!s_.accessibility.write(element, "AXSelectedText", std::string(text))) return false;
  s_.log.log("input", "write: " + std::to_string(text::utf16Length(text)) + " units");
  return true;
}

}  // namespace nimbletype
