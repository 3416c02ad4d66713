#include "platform/mac/accessibility/ax_object.h"

namespace nimbletype {
namespace {

bool isElement(CFTypeRef ref) {
  return ref && CFGetTypeID(ref) == AXUIElementGetTypeID();
}

}  // namespace

bool AXObject::same(const AccessibilityObject& other) const {
  const auto* object = dynamic_cast<const AXObject*>(&other);
  return object && CFEqual(ref_.get(), object->ref_.get());
}

ObjectRef wrapped(CFTypeRef ref) {
  if (!ref) return nullptr;
  if (isElement(ref))
    AXUIElementSetMessagingTimeout(static_cast<AXUIElementRef>(ref), Accessibility::messagingTimeout);
  return std::make_shared<AXObject>(CFRef<CFTypeRef>::retain(ref));
}

CFTypeRef referenceOf(const ObjectRef& object) {
  const auto* own = dynamic_cast<const AXObject*>(object.get());
  return own ? own->ref() : nullptr;
}

AXUIElementRef elementOf(const ObjectRef& object) {
  const CFTypeRef ref = referenceOf(object);
  return isElement(ref) ? static_cast<AXUIElementRef>(ref) : nullptr;
}

AXTextMarkerRef markerOf(const ObjectRef& object) {
  const CFTypeRef ref = referenceOf(object);
  return ref && CFGetTypeID(ref) == AXTextMarkerGetTypeID() ? static_cast<AXTextMarkerRef>(ref) : nullptr;
}

AXTextMarkerRangeRef markerRangeOf(const ObjectRef& object) {
  const CFTypeRef ref = referenceOf(object);
  const bool isRange = ref && CFGetTypeID(ref) == AXTextMarkerRangeGetTypeID();
  return isRange ? static_cast<AXTextMarkerRangeRef>(ref) : nullptr;
}

}  // namespace nimbletype
