#pragma once

namespace nimbletype {

// Whether the X11 display of the environment can be opened. Qt ends the process where it cannot.
bool canOpenDisplay();

}  // namespace nimbletype
