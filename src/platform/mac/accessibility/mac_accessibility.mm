#include "platform/mac/accessibility/mac_accessibility.h"

#import <ApplicationServices/ApplicationServices.h>
#import <Foundation/Foundation.h>

#include "platform/mac/accessibility/ax_batch.h"
#include "platform/mac/accessibility/ax_object.h"
#include "platform/mac/accessibility/ax_process_observer.h"

namespace nimbletype {

// The time-out of the system-wide element is the default of every element of this process.
MacAccessibility::MacAccessibility() {
  const auto everything = CFRef<AXUIElementRef>::adopt(AXUIElementCreateSystemWide());
  AXUIElementSetMessagingTimeout(everything.get(), messagingTimeout);
}

ObjectRef MacAccessibility::application(std::int64_t processID) {
  if (processID <= 0) return nullptr;
  const auto element =
      CFRef<AXUIElementRef>::adopt(AXUIElementCreateApplication(static_cast<pid_t>(processID)));
  return wrapped(element.get());
}

std::vector<AttributeValue> MacAccessibility::read(const ObjectRef& element,
                                                   std::span<const AttributeRead> reads) {
  @autoreleasepool {
    const AXUIElementRef target = elementOf(element);
    return target ? AXBatch(target).read(reads) : std::vector<AttributeValue>(reads.size());
  }
}

std::vector<AttributeValue> MacAccessibility::readBriefly(const ObjectRef& element,
                                                          std::span<const AttributeRead> reads) {
  @autoreleasepool {
    const AXUIElementRef target = elementOf(element);
    return target ? AXBatch(target, briefTimeout).read(reads) : std::vector<AttributeValue>(reads.size());
  }
}

bool MacAccessibility::write(const ObjectRef& element, std::string_view attribute,
                             const AttributeValue& value) {
  @autoreleasepool {
    const AXUIElementRef target = elementOf(element);
    return target && AXBatch(target).write(attribute, value);
  }
}

std::optional<Task> MacAccessibility::observe(std::int64_t processID, Notification notify) {
  auto observer = AXProcessObserver::open(static_cast<pid_t>(processID), std::move(notify));
  if (!observer) return std::nullopt;
  std::erase_if(observers_, [](const auto& entry) { return entry.second.expired(); });
  observers_[processID] = observer;
  return Task([observer] { observer->close(); });
}

std::optional<Task> MacAccessibility::watch(std::int64_t processID, const ObjectRef& element) {
  const auto found = observers_.find(processID);
  const auto observer = found == observers_.end() ? nullptr : found->second.lock();
  const AXUIElementRef target = elementOf(element);
  if (!observer || observer->isClosed() || !target || !observer->watch(target)) return std::nullopt;
  return Task([observer, element] { observer->unwatch(elementOf(element)); });
}

std::optional<MarkerPair> MacAccessibility::endsOf(const ObjectRef& markerRange) {
  const AXTextMarkerRangeRef range = markerRangeOf(markerRange);
  if (!range) return std::nullopt;
  const auto from = CFRef<AXTextMarkerRef>::adopt(AXTextMarkerRangeCopyStartMarker(range));
  const auto to = CFRef<AXTextMarkerRef>::adopt(AXTextMarkerRangeCopyEndMarker(range));
  if (!from || !to) return std::nullopt;
  return MarkerPair{wrapped(from.get()), wrapped(to.get())};
}

ObjectRef MacAccessibility::markerRange(const MarkerPair& ends) {
  const AXTextMarkerRef from = markerOf(ends.from), to = markerOf(ends.to);
  if (!from || !to) return nullptr;
  const auto range =
      CFRef<AXTextMarkerRangeRef>::adopt(AXTextMarkerRangeCreate(kCFAllocatorDefault, from, to));
  return wrapped(range.get());
}

bool MacAccessibility::isTrusted() {
  return AXIsProcessTrusted();
}

}  // namespace nimbletype
