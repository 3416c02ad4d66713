#include "platform/linux/accessibility/tree/atspi_object.h"

namespace nimbletype {

// FNV-1a: the same number in every run for the same object, unlike std::hash.
std::uint64_t AtspiObject::hash() const {
  std::uint64_t h = 0xcbf29ce484222325;
  for (const auto* part : {&bus_, &path_})
    for (const char c : *part) h = (h ^ static_cast<unsigned char>(c)) * 0x100000001b3;
  return h;
}

bool AtspiObject::operator==(const AtspiObject& other) const {
  return bus_ == other.bus_ && path_ == other.path_;
}

bool AtspiObject::same(const AccessibilityObject& other) const {
  const auto* object = dynamic_cast<const AtspiObject*>(&other);
  return object && *this == *object;
}

AtspiRef atspiRef(const ObjectRef& ref) {
  return std::dynamic_pointer_cast<const AtspiObject>(ref);
}

}  // namespace nimbletype
