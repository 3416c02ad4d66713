#pragma once
#include <optional>
#include <string_view>
#include <vector>

#include "input/insertion/insertion_target.h"
#include "input/insertion/paster.h"
#include "platform/accessibility/accessibility.h"
#include "platform/keys/event_poster.h"
#include "platform/pasteboard/pasteboard.h"
#include "platform/system/main_loop.h"
#include "platform/system/system_log.h"

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

// Puts accepted text into the focused field of whatever application has the focus. What comes later never
// overtakes what came before, whatever way either takes. Main thread only.
class TextInjector {
 public:
  struct Services {
    EventPoster& poster;
    Accessibility& accessibility;
    Pasteboard& pasteboard;
    MainLoop& loop;
    SystemLog& log;
  };
  explicit TextInjector(const Services& services);
  TextInjector(const TextInjector&) = delete;
  TextInjector& operator=(const TextInjector&) = delete;

  // Key presses. A text that this desktop's keys are no good for is written through Accessibility, and pasted
  // where that is refused.
  void type(std::string_view text, const InsertionTarget& target = {});
  // Replaces the element's selection, or inserts at its caret; types when there is no element or it refuses.
  void write(std::string_view text, const InsertionTarget& target);
  // By way of the pasteboard, whose contents come back afterwards.
  void paste(std::string_view text, const InsertionTarget& target = {});
  // User-perceived characters before the caret.
  void deleteBackwards(int count = 1, const InsertionTarget& target = {});

 private:
  bool beginKeys();
  void endKeys();
  void pressKeys(std::string_view text);
  bool isBehindKeys() const;
  bool writeTo(const ObjectRef& element, std::string_view text);

  Services s_;
  std::optional<MonotonicTime> keysAt_;  // when keys were posted last
  Paster paster_;
};

}  // namespace nimbletype
