#pragma once
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/desktop/geometry.h"
#include "platform/system/task.h"

namespace nimbletype {

// A position and length in UTF-16 units of a field's text.
struct TextRange {
  std::int64_t location = 0, length = 0;
  bool operator==(const TextRange&) const = default;
};

// The font of a run of text, as far as the application tells it.
struct TextFont {
  std::optional<std::string> name;
  std::optional<double> size;  // in the points that rectangles are measured in
  bool operator==(const TextFont&) const = default;
};

// An element, text marker or marker range of another application, known only to the adapter that made it.
// Identity: two handles denote the same thing exactly when `same` says so; `hash` agrees with it and is
// stable for the life of the thing.
class AccessibilityObject {
 public:
  virtual ~AccessibilityObject() = default;
  virtual std::uint64_t hash() const = 0;
  virtual bool same(const AccessibilityObject& other) const = 0;
};
using ObjectRef = std::shared_ptr<const AccessibilityObject>;
using ObjectList = std::vector<ObjectRef>;

// An attribute's value; monostate when the attribute is absent, the read failed or the time ran out.
using AttributeValue = std::variant<std::monostate, bool, double, std::string, TextRange, TopLeftRect,
                                    TextFont, ObjectRef, ObjectList>;

// One attribute read. Without a parameter it is a plain attribute such as "AXRole"; with one it is
// parameterised, such as "AXBoundsForRange" (TextRange → TopLeftRect), "AXStringForRange" (TextRange →
// string), "AXFontForRange" (TextRange → TextFont, taken from the attributed string there) or a text-marker
// attribute (ObjectRef). "AXWindows", "AXChildren" and "AXVisibleChildren" answer an ObjectList, absent
// where there are more than anyone could see. "AXFrame" answers position and size as one TopLeftRect.
// "AXIsSettable:NAME" answers a bool.
struct AttributeRead {
  std::string attribute;
  std::variant<std::monostate, TextRange, ObjectRef> parameter;
};

// The two ends of a text-marker range.
struct MarkerPair {
  ObjectRef from, to;
};

// Reading other applications' user interface. Main thread only; no call re-enters the main loop and none
// takes longer than `messagingTimeout`.
class Accessibility {
 public:
  static constexpr double messagingTimeout = 0.25;  // seconds
  static constexpr double briefTimeout = 0.03;

  virtual ~Accessibility() = default;

  // The element that stands for the application with this process id; none when it cannot be reached.
  virtual ObjectRef application(std::int64_t processID) = 0;

  // Reads all at once: returns when all are answered or the time-out has passed, one value for each read.
  virtual std::vector<AttributeValue> read(const ObjectRef& element,
                                           std::span<const AttributeRead> reads) = 0;
  // The same within `briefTimeout`, for what nobody waits for.
  virtual std::vector<AttributeValue> readBriefly(const ObjectRef& element,
                                                  std::span<const AttributeRead> reads) {
    return read(element, reads);
  }

  // Writes an attribute, such as "AXSelectedText", "AXSelectedTextRange" or "AXManualAccessibility"; false
  // when the element refused.
  virtual bool write(const ObjectRef& element, std::string_view attribute, const AttributeValue& value) = 0;

  // Tells of "AXFocusedUIElementChanged", "AXFocusedWindowChanged", "AXValueChanged" and
  // "AXSelectedTextChanged" in the process until the task is destroyed; the element is the one that changed.
  // Value and selection changes come only for elements given to `watch`. None when it cannot observe yet.
  using Notification = std::function<void(std::string_view name, const ObjectRef& element)>;
  [[nodiscard]] virtual std::optional<Task> observe(std::int64_t processID, Notification notify) = 0;
  [[nodiscard]] virtual std::optional<Task> watch(std::int64_t processID, const ObjectRef& element) = 0;

  // The ends of a text-marker range, and the range between two markers: none for anything else, and on
  // desktops without text markers. Neither asks the application.
  virtual std::optional<MarkerPair> endsOf(const ObjectRef& /*markerRange*/) { return std::nullopt; }
  virtual ObjectRef markerRange(const MarkerPair& /*ends*/) { return nullptr; }

  // Whether the desktop lets this process read other applications at all.
  virtual bool isTrusted() = 0;
};

}  // namespace nimbletype
