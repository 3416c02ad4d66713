#include "input/field/page_and_window.h"

#include "text/text.h"

namespace nimbletype {
namespace {

constexpr int deepestPage = 200;  // a tree that is deeper runs in a circle

std::optional<std::string> pageAddress(AXElement element) {
  for (int i = 0; element && i < deepestPage; ++i) {
    const auto values = element.read({{"AXRole", {}}, {"AXParent", {}}});
    if (valueAs<std::string>(values[0]) == "AXWebArea") return element.string("AXURL");
    element = element.neighbour(values[1]);
  }
  return std::nullopt;
}

}  // namespace

std::optional<std::string> domainOf(std::string_view url) {
  const std::size_t scheme = url.find("://");
  if (scheme == std::string_view::npos || scheme == 0) return std::nullopt;
  std::string_view host = url.substr(scheme + 3);
  host = host.substr(0, host.find_first_of("/?#"));
  if (const auto user = host.rfind('@'); user != std::string_view::npos) host.remove_prefix(user + 1);
  if (host.starts_with('[')) {
    const std::size_t end = host.find(']');
    host = end == std::string_view::npos ? std::string_view() : host.substr(0, end + 1);
  } else {
    host = host.substr(0, host.find(':'));
  }
  std::string name = text::lowercased(host);
  if (name.starts_with("www.")) name.erase(0, 4);
  return name.empty() ? std::nullopt : std::optional(name);
}

PageAndWindow readPageAndWindow(const AXElement& application, const AXElement& focused) {
  PageAndWindow found;
  if (const auto address = pageAddress(focused)) found.domain = domainOf(*address);
  if (const AXElement window = application.element("AXFocusedWindow"))
    found.windowTitle = window.string("AXTitle");
  return found;
}

}  // namespace nimbletype
