#pragma once

namespace nimbletype {

// For the few sentences that name things by what they are called on one desktop. Never decides what is done.
#ifdef __APPLE__
constexpr bool onMac = true;
#else
constexpr bool onMac = false;
#endif

}  // namespace nimbletype
