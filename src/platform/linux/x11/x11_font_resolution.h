#pragma once
#include <string_view>

namespace nimbletype {

// How many pixels of the screen applications draw an inch of text with: what the display's resources say
// (Xft.dpi), 96 where they do not.
double x11FontDotsPerInch();

// The same of the text of such resources.
double fontDotsPerInchIn(std::string_view resources);

}  // namespace nimbletype
