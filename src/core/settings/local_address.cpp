#include "core/settings/local_address.h"

#include "platform/network/web_address.h"
#include "text/text.h"

namespace nimbletype {

bool isLocalAddress(std::string_view address) {
  const auto parts = parseWebAddress(address);
  if (!parts) return false;
  const auto name = text::lowercased(parts->host);
  return name == "localhost" || name.ends_with(".localhost") || name == "127.0.0.1" || name == "::1";
}

}  // namespace nimbletype
