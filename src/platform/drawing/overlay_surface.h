#pragma once
#include <string>
#include <variant>
#include <vector>

#include "platform/desktop/geometry.h"

namespace nimbletype {

struct Color {
  double red = 0, green = 0, blue = 0, alpha = 1;  // 0...1, not premultiplied
  bool operator==(const Color&) const = default;
};

// A font as asked for: an empty name or one that does not exist means the system font. Size in points of the
// overlay space: the typographic points of a Mac, the pixels of a Linux screen.
struct FontSpec {
  std::string name;
  double size = 0;
  bool medium = false;
  // Every advance rounded to a whole pixel, as some toolkits set text. No meaning where all applications draw
  // through one text system.
  bool wholeAdvances = false;
  bool operator==(const FontSpec&) const = default;
};

// One line of text; `x`, `baseline` in points from the surface's bottom left corner. Words that run against
// the line's direction are set their own way within it.
struct TextDraw {
  std::string text;
  FontSpec font;
  Color color;
  double x = 0, baseline = 0;  // `x` is the left edge, whatever the direction
  bool rightToLeft = false;
  bool operator==(const TextDraw&) const = default;
};

// A filled rounded box, in points from the surface's bottom left corner.
struct BoxDraw {
  BottomLeftRect rect;
  double radius = 0;
  Color fill;
  Color stroke{.alpha = 0};  // a line of one point along the inside of its edge
  bool operator==(const BoxDraw&) const = default;
};

struct DrawList {
  BottomLeftRect frame;  // on screen
  std::vector<std::variant<BoxDraw, TextDraw>> items;
  bool operator==(const DrawList&) const = default;
};

// One borderless window over all others that never takes focus, key presses or the pointer. Main thread only.
class OverlaySurface {
 public:
  virtual ~OverlaySurface() = default;
  // Shows or replaces the whole content; it is on screen when this returns, as far as the desktop allows.
  virtual void show(const DrawList& list) = 0;
  virtual void hide() = 0;
};

}  // namespace nimbletype
