#include "input/field/ax_element.h"

namespace nimbletype {

bool AXElement::operator==(const AXElement& other) const {
  return ref_ && other.ref_ ? ref_->same(*other.ref_) : !ref_ && !other.ref_;
}

std::vector<AttributeValue> AXElement::read(const std::vector<AttributeRead>& reads) const {
  return ref_ ? accessibility_->read(ref_, reads) : std::vector<AttributeValue>(reads.size());
}

std::vector<AttributeValue> AXElement::readBriefly(const std::vector<AttributeRead>& reads) const {
  return ref_ ? accessibility_->readBriefly(ref_, reads) : std::vector<AttributeValue>(reads.size());
}

AttributeValue AXElement::value(AttributeRead one) const {
  return read(std::vector<AttributeRead>{std::move(one)}).front();
}

std::optional<std::string> AXElement::string(const char* attribute) const {
  return valueAs<std::string>(value({attribute, {}}));
}

AXElement AXElement::element(const char* attribute) const {
  return neighbour(value({attribute, {}}));
}

AXElement AXElement::neighbour(const AttributeValue& value) const {
  const auto found = valueAs<ObjectRef>(value);
  return found && *found ? AXElement(*accessibility_, *found) : AXElement();
}

std::optional<TextRange> AXElement::range(const char* attribute) const {
  return valueAs<TextRange>(value({attribute, {}}));
}

std::optional<TopLeftRect> AXElement::bounds(const TextRange& range) const {
  return valueAs<TopLeftRect>(value({"AXBoundsForRange", range}));
}

std::optional<std::string> AXElement::text(const TextRange& range) const {
  const auto plain = valueAs<std::string>(value({"AXStringForRange", range}));
  return plain ? plain : valueAs<std::string>(value({"AXAttributedStringForRange", range}));
}

std::optional<MarkerPair> AXElement::endsOf(const AttributeValue& markerRange) const {
  const auto range = valueAs<ObjectRef>(markerRange);
  return range && *range ? accessibility_->endsOf(*range) : std::nullopt;
}

ObjectRef AXElement::markerRange(const MarkerPair& ends) const {
  return accessibility_->markerRange(ends);
}

}  // namespace nimbletype
