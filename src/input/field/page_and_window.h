#pragma once
#include <optional>
#include <string>
#include <string_view>

#include "input/field/ax_element.h"

namespace nimbletype {

// Where a field lies: the site of its page, and its window.
struct PageAndWindow {
  std::optional<std::string> domain, windowTitle;
};

PageAndWindow readPageAndWindow(const AXElement& application, const AXElement& focused);

// The host of an address with a scheme, without a leading "www."; none for anything else.
std::optional<std::string> domainOf(std::string_view url);

}  // namespace nimbletype
