#include "platform/mac/accessibility/ax_batch.h"

#include <optional>

#include "platform/mac/accessibility/ax_values.h"
#include "platform/mac/bridge/mac_text.h"

namespace nimbletype {
namespace {

using Seconds = std::chrono::duration<double>;

constexpr std::string_view settablePrefix = "AXIsSettable:";
constexpr std::string_view frameAttribute = "AXFrame";
constexpr std::string_view fontAttribute = "AXFontForRange";

bool isSettableRead(const AttributeRead& read) {
  return read.attribute.starts_with(settablePrefix);
}
bool isPlain(const AttributeRead& read) {
  return std::holds_alternative<std::monostate>(read.parameter) && !isSettableRead(read);
}

// The attributes that answer a plain read: two for the frame, otherwise the one it names.
NSArray<NSString*>* attributesFor(const AttributeRead& read) {
  if (read.attribute != frameAttribute) return @[ nsString(read.attribute) ];
  return @[ (__bridge NSString*)kAXPositionAttribute, (__bridge NSString*)kAXSizeAttribute ];
}

struct ToParameter {
  AttributeValue operator()(std::monostate) const { return {}; }
  AttributeValue operator()(const TextRange& range) const { return range; }
  AttributeValue operator()(const ObjectRef& object) const { return object; }
};

}  // namespace

AXBatch::AXBatch(AXUIElementRef element, double seconds)
    : element_(element),
      end_(std::chrono::steady_clock::now() +
           std::chrono::duration_cast<std::chrono::steady_clock::duration>(Seconds(seconds))) {}

AXBatch::~AXBatch() {
  AXUIElementSetMessagingTimeout(element_, Accessibility::messagingTimeout);
}

// A time-out of zero would mean the system's own default, so the last millisecond is not used.
bool AXBatch::timeIsLeft() {
  const double left = Seconds(end_ - std::chrono::steady_clock::now()).count();
  if (left < 0.001) return false;
  AXUIElementSetMessagingTimeout(element_, static_cast<float>(left));
  return true;
}

std::vector<AttributeValue> AXBatch::read(std::span<const AttributeRead> reads) {
  std::vector<AttributeValue> values(reads.size());
  readPlain(reads, values);
  for (std::size_t i = 0; i < reads.size(); ++i) {
    if (isPlain(reads[i])) continue;
    values[i] = isSettableRead(reads[i]) ? readSettable(reads[i].attribute.substr(settablePrefix.size()))
                                         : readParameterised(reads[i]);
  }
  return values;
}

// One message answers all plain attributes; an attribute that failed has an error in its place.
void AXBatch::readPlain(std::span<const AttributeRead> reads, std::vector<AttributeValue>& values) {
  NSMutableArray<NSString*>* names = [NSMutableArray array];
  for (const AttributeRead& read : reads)
    if (isPlain(read)) [names addObjectsFromArray:attributesFor(read)];
  if (names.count == 0 || !timeIsLeft()) return;
  const auto answers = copiedBy<CFArrayRef>([&](CFArrayRef* out) {
    AXUIElementCopyMultipleAttributeValues(element_, (__bridge CFArrayRef)names, 0, out);
  });
  if (!answers || CFArrayGetCount(answers.get()) != static_cast<CFIndex>(names.count)) return;
  CFIndex next = 0;
  for (std::size_t i = 0; i < reads.size(); ++i) {
    if (!isPlain(reads[i])) continue;
    const CFTypeRef answer = CFArrayGetValueAtIndex(answers.get(), next++);
    values[i] = reads[i].attribute == frameAttribute
                    ? frameValue(answer, CFArrayGetValueAtIndex(answers.get(), next++))
                    : attributeValue(answer);
  }
}

AttributeValue AXBatch::readSettable(std::string_view attribute) {
  Boolean settable = false;
  NSString* name = nsString(attribute);
  if (!timeIsLeft()) return {};
  if (AXUIElementIsAttributeSettable(element_, (__bridge CFStringRef)name, &settable) != kAXErrorSuccess)
    return {};
  return settable != 0;
}

AttributeValue AXBatch::readParameterised(const AttributeRead& read) {
  const auto parameter = accessibilityValue(std::visit(ToParameter{}, read.parameter));
  if (!parameter || !timeIsLeft()) return {};
  const bool font = read.attribute == fontAttribute;
  NSString* name =
      font ? (__bridge NSString*)kAXAttributedStringForRangeParameterizedAttribute : nsString(read.attribute);
  const auto answer = copiedBy<CFTypeRef>([&](CFTypeRef* out) {
    AXUIElementCopyParameterizedAttributeValue(element_, (__bridge CFStringRef)name, parameter.get(), out);
  });
  return font ? fontValue(answer.get()) : attributeValue(answer.get());
}

bool AXBatch::write(std::string_view attribute, const AttributeValue& value) {
  const auto converted = accessibilityValue(value);
  NSString* name = nsString(attribute);
  if (!converted || !timeIsLeft()) return false;
  return AXUIElementSetAttributeValue(element_, (__bridge CFStringRef)name, converted.get()) ==
         kAXErrorSuccess;
}

}  // namespace nimbletype
