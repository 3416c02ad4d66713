#pragma once
#include <string_view>
#include <vector>

#include "platform/desktop/screen_reader.h"

namespace nimbletype {

// Where a picture was taken: its top left corner on the screen, and how many of its pixels make a point.
struct PictureOrigin {
  double x = 0, y = 0, scale = 1;
};

// The lines of text in what `tesseract ... tsv` prints, without words it is not sure of.
std::vector<PlacedText> tesseractLines(std::string_view table, const PictureOrigin& origin);

}  // namespace nimbletype
