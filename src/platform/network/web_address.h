#pragma once
#include <optional>
#include <string_view>

namespace nimbletype {

// An address that names a host, in its parts, which are parts of the text it was read from.
struct WebAddress {
  std::string_view scheme;    // empty for "//host"
  std::string_view userInfo;  // name and password
  std::string_view host;      // without brackets; may be empty
  std::string_view hostPort;  // as written
  std::string_view path, query;
};

// None for what is no such address; nothing is guessed and blanks are not allowed.
std::optional<WebAddress> parseWebAddress(std::string_view text);

}  // namespace nimbletype
