#include "input/field/pinned_field.h"

#include <utility>

namespace nimbletype {
namespace {

bool isSameName(const std::optional<std::string>& one, const std::optional<std::string>& other) {
  return !one || !other || *one == *other;
}

}  // namespace

ElementTraits readTraits(const AXElement& element) {
  const auto values = element.read({{"AXRole", {}}, {"AXIdentifier", {}}, {"AXTitle", {}}});
  return {valueAs<std::string>(values[0]).value_or(""), valueAs<std::string>(values[1]),
          valueAs<std::string>(values[2])};
}

bool isAlike(const ElementTraits& pinned, const ElementTraits& other) {
  return pinned.role == other.role && isSameName(pinned.identifier, other.identifier) &&
         isSameName(pinned.title, other.title);
}

void PinnedField::pin(std::int64_t processID, AXElement element) {
  processID_ = processID;
  traits_ = readTraits(element);
  element_ = std::move(element);
  searchNote_.reset();
}

// An application that does not answer has not lost its field: the old one is asked first every time.
AXElement PinnedField::find(const AXElement& application) {
  searchNote_.reset();
  if (!readTraits(element_).role.empty()) return element_;
  AXElement focus = application.element("AXFocusedUIElement");
  if (focus && isAlike(traits_, readTraits(focus))) return element_ = std::move(focus);
  searchNote_ = "no " + traits_.role + " like it has the focus";
  return {};
}

}  // namespace nimbletype
