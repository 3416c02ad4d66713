#include <algorithm>

#include "platform/scripted/accessibility/scripted_accessibility.h"
#include "text/text.h"

namespace nimbletype {
namespace {

class Marker final : public AccessibilityObject {
 public:
  Marker(ObjectRef of, std::int64_t at) : owner(std::move(of)), position(at) {}
  std::uint64_t hash() const override {
    return owner->hash() * 1'000'003 + static_cast<std::uint64_t>(position);
  }
  bool same(const AccessibilityObject& other) const override {
    const auto* marker = dynamic_cast<const Marker*>(&other);
    return marker && marker->owner->same(*owner) && marker->position == position;
  }
  const ObjectRef owner;
  const std::int64_t position;
};

class MarkerRange final : public AccessibilityObject {
 public:
  explicit MarkerRange(MarkerPair of) : ends(std::move(of)) {}
  std::uint64_t hash() const override { return ends.from->hash() * 31 + ends.to->hash(); }
  bool same(const AccessibilityObject& other) const override {
    const auto* range = dynamic_cast<const MarkerRange*>(&other);
    return range && range->ends.from->same(*ends.from) && range->ends.to->same(*ends.to);
  }
  const MarkerPair ends;
};

ObjectRef rangeOf(const ObjectRef& owner, std::int64_t from, std::int64_t to) {
  return std::make_shared<MarkerRange>(
      MarkerPair{std::make_shared<Marker>(owner, from), std::make_shared<Marker>(owner, to)});
}

// The answers about one marker or one range of a text.
struct Answers {
  const ScriptedElement& element;
  const ObjectRef& ref;
  const std::u16string& text = *element.text;

  std::int64_t size() const { return static_cast<std::int64_t>(text.size()); }
  std::int64_t clipped(std::int64_t position) const { return std::clamp<std::int64_t>(position, 0, size()); }
  std::int64_t lineStart(std::int64_t position) const {
    const auto found = position > 0 ? text.rfind(u'\n', static_cast<std::size_t>(position - 1)) : text.npos;
    return found == text.npos ? 0 : static_cast<std::int64_t>(found) + 1;
  }
  std::int64_t lineEnd(std::int64_t position) const {
    return static_cast<std::int64_t>(
        std::min(text.find(u'\n', static_cast<std::size_t>(position)), text.size()));
  }

  AttributeValue atMarker(std::string_view attribute, std::int64_t position) const {
    if (attribute == "AXPreviousTextMarkerForTextMarker" && position > 0)
      return std::make_shared<Marker>(ref, position - 1);
    if (attribute == "AXLineTextMarkerRangeForTextMarker")
      return rangeOf(ref, lineStart(position), lineEnd(position));
    if (attribute == "AXPreviousLineStartTextMarkerForTextMarker" && lineStart(position) > 0)
      return std::make_shared<Marker>(ref, lineStart(lineStart(position) - 1));
    if (attribute == "AXUIElementForTextMarker") return element.leafAt ? element.leafAt(position) : ref;
    return {};
  }
  AttributeValue inRange(std::string_view attribute, const TextRange& range) const {
    if (attribute == "AXBoundsForTextMarkerRange") return scriptedBox(element, range);
    if (attribute != "AXStringForTextMarkerRange") return {};
    return text::toUtf8(std::u16string_view(text).substr(static_cast<std::size_t>(range.location),
                                                         static_cast<std::size_t>(range.length)));
  }
};

}  // namespace

AttributeValue answerThroughMarkers(const ScriptedElement& element, const ObjectRef& ref,
                                    const AttributeRead& read) {
  const Answers answers{element, ref};
  if (read.attribute == "AXSelectedTextMarkerRange") {
    const auto& at = element.selection;
    return rangeOf(ref, answers.clipped(at.location), answers.clipped(at.location + at.length));
  }
  const auto* parameter = std::get_if<ObjectRef>(&read.parameter);
  if (!parameter || !*parameter) return {};
  if (read.attribute == "AXTextMarkerRangeForUIElement" && (*parameter)->same(*ref))
    return rangeOf(ref, 0, answers.size());
  if (const auto* marker = dynamic_cast<const Marker*>(parameter->get()))
    return answers.atMarker(read.attribute, answers.clipped(marker->position));
  const auto* range = dynamic_cast<const MarkerRange*>(parameter->get());
  if (!range) return {};
  const auto from = answers.clipped(static_cast<const Marker&>(*range->ends.from).position);
  const auto to = answers.clipped(static_cast<const Marker&>(*range->ends.to).position);
  return to < from ? AttributeValue() : answers.inRange(read.attribute, {from, to - from});
}

std::optional<MarkerPair> ScriptedAccessibility::endsOf(const ObjectRef& markerRange) {
  const auto* range = dynamic_cast<const MarkerRange*>(markerRange.get());
  return range ? std::optional(range->ends) : std::nullopt;
}

ObjectRef ScriptedAccessibility::markerRange(const MarkerPair& ends) {
  const bool markers =
      dynamic_cast<const Marker*>(ends.from.get()) && dynamic_cast<const Marker*>(ends.to.get());
  return markers ? std::make_shared<MarkerRange>(ends) : nullptr;
}

}  // namespace nimbletype
