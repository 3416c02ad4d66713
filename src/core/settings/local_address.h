#pragma once
#include <string_view>

namespace nimbletype {

// Whether text sent to this address stays on this machine. False as well for what is no address.
bool isLocalAddress(std::string_view address);

}  // namespace nimbletype
