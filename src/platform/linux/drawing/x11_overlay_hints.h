#pragma once
#include <cstdint>

namespace nimbletype {

// What the overlay's window needs to know of the X server and tell its compositor. All of them do nothing
// where there is no X server.

// Whether a compositor runs on the default screen, so that a window can be transparent. One short round trip.
bool x11MixesWindows();

// Asks compositors for neither shadow, blur nor the looks of a tooltip around this window.
void x11MarkOverlay(std::uint64_t window);

// Sends the requests that Qt has not sent yet: an unmapped window goes at once, not at the loop's next turn.
void x11Flush();

}  // namespace nimbletype
