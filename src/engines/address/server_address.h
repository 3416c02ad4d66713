#pragma once
#include <optional>
#include <string>
#include <string_view>

namespace nimbletype {

// Where text sent to a server goes.
enum class ServerPlace { thisMachine, localNetwork, elsewhere };

// Decided by the address's host alone, without asking the network; in doubt it is elsewhere. None for what is
// no address.
std::optional<ServerPlace> serverPlace(std::string_view address);

// The sentence that warns of sending text there; empty when it stays on this machine and for what is no
// address.
std::string serverWarning(std::string_view address);

}  // namespace nimbletype
