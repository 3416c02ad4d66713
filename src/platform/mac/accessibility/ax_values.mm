#include "platform/mac/accessibility/ax_values.h"

#import <ApplicationServices/ApplicationServices.h>
#import <Foundation/Foundation.h>

#include "platform/mac/accessibility/ax_object.h"
#include "platform/mac/bridge/mac_text.h"

namespace nimbletype {
namespace {

template <typename T>
std::optional<T> unpacked(CFTypeRef value, AXValueType type) {
  T out{};
  if (!value || CFGetTypeID(value) != AXValueGetTypeID()) return std::nullopt;
  const auto packed = static_cast<AXValueRef>(value);
  if (AXValueGetType(packed) != type || !AXValueGetValue(packed, type, &out)) return std::nullopt;
  return out;
}

AttributeValue unpackedStructure(CFTypeRef value) {
  if (auto rect = unpacked<CGRect>(value, kAXValueTypeCGRect))
    return TopLeftRect{rect->origin.x, rect->origin.y, rect->size.width, rect->size.height};
  if (auto range = unpacked<CFRange>(value, kAXValueTypeCFRange))
    return TextRange{range->location, range->length};
  if (auto point = unpacked<CGPoint>(value, kAXValueTypeCGPoint))
    return TopLeftRect{point->x, point->y, 0, 0};
  if (auto size = unpacked<CGSize>(value, kAXValueTypeCGSize))
    return TopLeftRect{0, 0, size->width, size->height};
  return {};
}

template <typename T>
CFRef<CFTypeRef> packed(AXValueType type, const T& value) {
  return CFRef<CFTypeRef>::adopt(AXValueCreate(type, &value));
}

template <typename T>
T* dictionaryEntry(NSDictionary* dictionary, CFStringRef key, Class type) {
  id entry = dictionary[(__bridge NSString*)key];
  return [entry isKindOfClass:type] ? entry : nil;
}

constexpr CFIndex mostElements = 500;

AttributeValue elementsIn(CFArrayRef array) {
  if (CFArrayGetCount(array) > mostElements) return {};
  ObjectList elements;
  for (CFIndex i = 0; i < CFArrayGetCount(array); ++i) {
    const CFTypeRef entry = CFArrayGetValueAtIndex(array, i);
    if (CFGetTypeID(entry) == AXUIElementGetTypeID()) elements.push_back(wrapped(entry));
  }
  return elements;
}

struct ToAccessibility {
  CFRef<CFTypeRef> operator()(std::monostate) const { return {}; }
  CFRef<CFTypeRef> operator()(const TextFont&) const { return {}; }
  CFRef<CFTypeRef> operator()(const ObjectList&) const { return {}; }
  CFRef<CFTypeRef> operator()(bool value) const {
    return CFRef<CFTypeRef>::retain(value ? kCFBooleanTrue : kCFBooleanFalse);
  }
  CFRef<CFTypeRef> operator()(double value) const {
    return CFRef<CFTypeRef>::retain((__bridge CFTypeRef) @(value));
  }
  CFRef<CFTypeRef> operator()(const std::string& value) const {
    return CFRef<CFTypeRef>::retain((__bridge CFTypeRef)nsString(value));
  }
  CFRef<CFTypeRef> operator()(const TextRange& value) const {
    return packed(kAXValueTypeCFRange, CFRangeMake(value.location, value.length));
  }
  CFRef<CFTypeRef> operator()(const TopLeftRect& value) const {
    return packed(kAXValueTypeCGRect, CGRectMake(value.x, value.y, value.width, value.height));
  }
  CFRef<CFTypeRef> operator()(const ObjectRef& value) const {
    return CFRef<CFTypeRef>::retain(referenceOf(value));
  }
};

}  // namespace

AttributeValue attributeValue(CFTypeRef value) {
  if (!value) return {};
  const CFTypeID type = CFGetTypeID(value);
  if (type == CFBooleanGetTypeID()) return CFBooleanGetValue(static_cast<CFBooleanRef>(value)) != 0;
  if (type == CFNumberGetTypeID()) return ((__bridge NSNumber*)value).doubleValue;
  if (type == CFStringGetTypeID()) return utf8String((__bridge NSString*)value);
  if (type == CFAttributedStringGetTypeID()) return utf8String(((__bridge NSAttributedString*)value).string);
  if (type == CFURLGetTypeID()) return utf8String(((__bridge NSURL*)value).absoluteString);
  if (type == AXValueGetTypeID()) return unpackedStructure(value);
  if (type == AXUIElementGetTypeID() || type == AXTextMarkerGetTypeID() ||
      type == AXTextMarkerRangeGetTypeID())
    return wrapped(value);
  if (type == CFArrayGetTypeID()) return elementsIn(static_cast<CFArrayRef>(value));
  return {};
}

AttributeValue frameValue(CFTypeRef position, CFTypeRef size) {
  const auto origin = unpacked<CGPoint>(position, kAXValueTypeCGPoint);
  const auto extent = unpacked<CGSize>(size, kAXValueTypeCGSize);
  if (!origin || !extent) return {};
  return TopLeftRect{origin->x, origin->y, extent->width, extent->height};
}

AttributeValue fontValue(CFTypeRef attributedString) {
  if (!attributedString || CFGetTypeID(attributedString) != CFAttributedStringGetTypeID()) return {};
  NSAttributedString* string = (__bridge NSAttributedString*)attributedString;
  if (string.length == 0) return {};
  id font = [string attribute:(__bridge NSString*)kAXFontTextAttribute atIndex:0 effectiveRange:nil];
  if (![font isKindOfClass:NSDictionary.class]) return {};
  TextFont answer;
  if (NSString* name = dictionaryEntry<NSString>(font, kAXFontNameKey, NSString.class))
    answer.name = utf8String(name);
  if (NSNumber* size = dictionaryEntry<NSNumber>(font, kAXFontSizeKey, NSNumber.class))
    answer.size = size.doubleValue;
  return answer;
}

CFRef<CFTypeRef> accessibilityValue(const AttributeValue& value) {
  return std::visit(ToAccessibility{}, value);
}

}  // namespace nimbletype
