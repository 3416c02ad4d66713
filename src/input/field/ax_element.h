#pragma once
#include <optional>
#include <string>
#include <vector>

#include "platform/accessibility/accessibility.h"

namespace nimbletype {

// The value when it is of this type; none for an absent one or one of another type.
template <typename T>
std::optional<T> valueAs(const AttributeValue& value) {
  const T* held = std::get_if<T>(&value);
  return held ? std::optional<T>(*held) : std::nullopt;
}

// One element of another application's user interface, through which all its attributes are read. A failed
// read is an absent value.
class AXElement {
 public:
  AXElement() = default;
  AXElement(Accessibility& accessibility, ObjectRef ref)
      : accessibility_(&accessibility), ref_(std::move(ref)) {}

  explicit operator bool() const { return ref_ != nullptr; }
  const ObjectRef& ref() const { return ref_; }
  bool operator==(const AXElement& other) const;

  // All at once, one value for each read.
  std::vector<AttributeValue> read(const std::vector<AttributeRead>& reads) const;
  // The same for what nobody waits for.
  std::vector<AttributeValue> readBriefly(const std::vector<AttributeRead>& reads) const;
  AttributeValue value(AttributeRead read) const;

  std::optional<std::string> string(const char* attribute) const;
  AXElement element(const char* attribute) const;
  // The element that a value of this one names.
  AXElement neighbour(const AttributeValue& value) const;
  std::optional<TextRange> range(const char* attribute) const;
  std::optional<TopLeftRect> bounds(const TextRange& range) const;
  // The plain string of a range, else that of its attributed string.
  std::optional<std::string> text(const TextRange& range) const;

  // The ends of a text-marker range, and the range between two markers; none where there are no markers.
  std::optional<MarkerPair> endsOf(const AttributeValue& markerRange) const;
  ObjectRef markerRange(const MarkerPair& ends) const;

 private:
  Accessibility* accessibility_ = nullptr;
  ObjectRef ref_;
};

}  // namespace nimbletype
