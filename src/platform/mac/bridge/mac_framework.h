#pragma once

namespace nimbletype {

// Loads one of the system's frameworks that the program is not linked with; false where there is none. Its
// classes are found by NSClassFromString from then on.
bool loadFramework(const char* name);

}  // namespace nimbletype
