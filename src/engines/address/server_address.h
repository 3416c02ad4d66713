#pragma once
#include <optional>
#include <string>
#include <string_view>

namespace nimbletype {

// Where text sent to a server goes. It stays on this machine only for what `isLocalAddress` says so of; other
// hosts that look like this machine's own may be it.
enum class ServerPlace { staysOnThisMachine, mayBeThisMachine, localNetwork, elsewhere };

// Decided by the address's host alone, without asking the network; in doubt it is elsewhere. None for what is
// no address.
std::optional<ServerPlace> serverPlace(std::string_view address);

// The sentence that warns of sending text there; empty when it stays on this machine, and for what is no
// address: nothing can be sent there.
std::string serverWarning(std::string_view address);

}  // namespace nimbletype
