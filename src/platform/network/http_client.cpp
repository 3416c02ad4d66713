#include "platform/network/http_client.h"

#include <algorithm>

namespace nimbletype {
namespace {

char lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

std::string_view headerValue(const std::vector<HttpHeader>& headers, std::string_view name) {
  for (const HttpHeader& header : headers)
    if (std::ranges::equal(header.name, name, {}, lower, lower)) return header.value;
  return {};
}

}  // namespace nimbletype
