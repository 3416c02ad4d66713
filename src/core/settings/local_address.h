#pragma once
#include <string_view>

namespace nimbletype {

// Whether the address names this machine in one of four ways: "localhost", a name below it, 127.0.0.1 or ::1.
// Any other host counts as another machine, even where it means this one, and so does what is no address.
bool isLocalAddress(std::string_view address);

}  // namespace nimbletype
