#pragma once
#import <ApplicationServices/ApplicationServices.h>

#include "platform/accessibility/accessibility.h"
#include "platform/mac/bridge/cf_ref.h"

namespace nimbletype {

// An AXUIElement, AXTextMarker or AXTextMarkerRange behind the port's opaque handle.
class AXObject final : public AccessibilityObject {
 public:
  explicit AXObject(CFRef<CFTypeRef> ref) : ref_(std::move(ref)) {}
  CFTypeRef ref() const { return ref_.get(); }
  std::uint64_t hash() const override { return CFHash(ref_.get()); }
  bool same(const AccessibilityObject& other) const override;

 private:
  CFRef<CFTypeRef> ref_;
};

// Wraps an object that the caller does not own. Elements get the messaging time-out on the way, so that none
// is ever read without it.
ObjectRef wrapped(CFTypeRef ref);

// The reference behind a handle, null for no handle.
CFTypeRef referenceOf(const ObjectRef& object);
// The element behind a handle, null when it is none or not an element.
AXUIElementRef elementOf(const ObjectRef& object);
// The same for text markers and their ranges.
AXTextMarkerRef markerOf(const ObjectRef& object);
AXTextMarkerRangeRef markerRangeOf(const ObjectRef& object);

}  // namespace nimbletype
