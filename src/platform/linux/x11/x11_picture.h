#pragma once
#include <optional>
#include <string>

#include "platform/desktop/geometry.h"

namespace nimbletype {

// A grey picture of a part of the screen, twice as large in each direction (recognition wants larger letters
// than screens show), as a PGM file. Opens a connection of its own, so any thread may call it.
struct X11Picture {
  static constexpr double scale = 2;
  std::string pgm;
  double x = 0, y = 0;  // its top left corner on the screen
};
std::optional<X11Picture> x11PictureOf(const TopLeftRect& frame);

}  // namespace nimbletype
