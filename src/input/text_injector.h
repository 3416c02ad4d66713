#pragma once
#include <functional>
#include <string_view>
#include <vector>

#include "platform/accessibility.h"
#include "platform/event_poster.h"
#include "platform/system_log.h"

namespace nimbletype {

// A text as it is typed: first real presses of the Space key, then chunks of text.
struct TypedText {
  std::size_t leadingSpaces = 0;
  std::vector<std::u16string> chunks;
  bool operator==(const TypedText&) const = default;
};

// Chunks have at most 20 UTF-16 units. None ends inside a surrogate pair, nor inside a user-perceived
// character unless that character is longer than a chunk.
TypedText splitForTyping(std::string_view text);

// Puts accepted text into the focused field of whatever application has the focus. Main thread only.
class TextInjector {
 public:
  TextInjector(EventPoster& poster, Accessibility& accessibility, SystemLog& log)
      : poster_(poster), accessibility_(accessibility), log_(log) {}

  void type(std::string_view text);
  // Replaces the element's selection, or inserts at its caret; types when there is no element or it refuses.
  void write(std::string_view text, const ObjectRef& focusedElement);
  // Presses Delete once for each character.
  void deleteBackwards(int count = 1);

 private:
  EventPoster& poster_;
  Accessibility& accessibility_;
  SystemLog& log_;
};

}  // namespace nimbletype
