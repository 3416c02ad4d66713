#pragma once
#include <cstdint>
#include <string_view>

#include "platform/keys/keys.h"

namespace nimbletype {

// Posts key events that this process's own tap lets through untouched. What is posted arrives in the order it
// was posted, though part of it may still be on its way when `end` returns. Main thread only.
class EventPoster {
 public:
  virtual ~EventPoster() = default;
  virtual bool mayPost() const = 0;
  // Prepares one insertion; false when the desktop gives no event source, and nothing may be posted then.
  virtual bool begin() = 0;
  virtual void end() = 0;
  // Whether key events are a good way to put this text in: quick, and sure to arrive as it is. Between
  // `begin` and `end`.
  virtual bool suits(std::u16string_view text) const = 0;
  // Key down and key up, with exactly these modifiers whatever the user holds.
  virtual void press(std::uint16_t keyCode, ModifierSet modifiers) = 0;
  // Types a chunk of at most 20 UTF-16 units as one event pair, independent of the keyboard layout.
  virtual void type(std::u16string_view chunk) = 0;
};

}  // namespace nimbletype
