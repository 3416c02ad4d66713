#pragma once
#include <string_view>

namespace nimbletype {

// Client message sent to the key relay's window right before (1) and right after (0) the events this process
// posts. The server passes both on in one line with the events, so each is seen exactly where it belongs.
inline constexpr std::string_view ownEventMark = "_NIMBLETYPE_POSTING";

}  // namespace nimbletype
