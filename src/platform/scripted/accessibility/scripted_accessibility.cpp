#include "platform/scripted/accessibility/scripted_accessibility.h"

#include <algorithm>

#include "text/text.h"

namespace nimbletype {
namespace {

class ScriptedObject final : public AccessibilityObject {
 public:
  explicit ScriptedObject(std::uint64_t hash) : hash_(hash) {}
  std::uint64_t hash() const override { return hash_; }
  bool same(const AccessibilityObject& other) const override { return other.hash() == hash_; }

 private:
  std::uint64_t hash_;
};

bool asksForText(const AttributeRead& read) {
  return read.attribute == "AXValue" || read.attribute.find("String") != std::string::npos;
}

TextRange clipped(const TextRange& range, const std::u16string& text) {
  const auto size = static_cast<std::int64_t>(text.size());
  const std::int64_t from = std::clamp<std::int64_t>(range.location, 0, size);
  return {from, std::clamp<std::int64_t>(range.length, 0, size - from)};
}

std::u16string_view part(const std::u16string& text, const TextRange& range) {
  return std::u16string_view(text).substr(static_cast<std::size_t>(range.location),
                                          static_cast<std::size_t>(range.length));
}

AttributeValue answerInText(const ScriptedElement& element, const AttributeRead& read) {
  const auto* asked = std::get_if<TextRange>(&read.parameter);
  if (read.attribute == "AXSelectedTextRange") return element.selection;
  if (read.attribute == "AXNumberOfCharacters") return static_cast<double>(element.text->size());
  if (read.attribute == "AXValue") return text::toUtf8(*element.text);
  if (read.attribute == "AXIsSettable:AXValue") return true;
  if (!asked) return {};
  const TextRange range = clipped(*asked, *element.text);
  if (read.attribute == "AXStringForRange") return text::toUtf8(part(*element.text, range));
  if (read.attribute == "AXBoundsForRange") return scriptedBox(element, range);
  if (read.attribute == "AXFontForRange") return element.font;
  return {};
}

}  // namespace

TopLeftRect scriptedBox(const ScriptedElement& element, const TextRange& range) {
  const std::u16string_view before = part(*element.text, {0, range.location});
  const auto lines = std::ranges::count(before, u'\n');
  const std::size_t lastBreak = before.rfind(u'\n');
  const std::size_t column =
      lastBreak == std::u16string_view::npos ? before.size() : before.size() - lastBreak - 1;
  const auto& cell = element.textOrigin;
  const bool isBreak = part(*element.text, range) == u"\n";
  return {cell.x + cell.width * static_cast<double>(column),
          cell.y + cell.height * static_cast<double>(lines),
          isBreak ? 0 : cell.width * static_cast<double>(range.length), cell.height};
}

ObjectRef ScriptedAccessibility::addElement(ScriptedElement element) {
  elements_[++lastHash_] = std::move(element);
  return std::make_shared<ScriptedObject>(lastHash_);
}

ObjectRef ScriptedAccessibility::addApplication(std::int64_t processID) {
  ScriptedElement element;
  element.attributes["AXRole"] = std::string("AXApplication");
  return applications_[processID] = addElement(std::move(element));
}

ObjectRef ScriptedAccessibility::addChild(const ObjectRef& parent, ScriptedElement element) {
  element.attributes["AXParent"] = parent;
  const bool isWindow = element.attributes["AXRole"] == AttributeValue(std::string("AXWindow"));
  ObjectRef child = addElement(std::move(element));
  for (const char* name : {"AXChildren", isWindow ? "AXWindows" : "AXVisibleChildren"}) {
    AttributeValue& list = at(parent).attributes[name];
    if (!std::holds_alternative<ObjectList>(list)) list = ObjectList();
    std::get<ObjectList>(list).push_back(child);
  }
  return child;
}

ScriptedElement& ScriptedAccessibility::at(const ObjectRef& element) {
  return elements_.at(element->hash());
}

void ScriptedAccessibility::remove(const ObjectRef& element) {
  elements_.erase(element->hash());
}

void ScriptedAccessibility::focus(std::int64_t processID, const ObjectRef& element) {
  auto& attributes = at(applications_.at(processID)).attributes;
  attributes["AXFocusedUIElement"] = element ? AttributeValue(element) : AttributeValue();
  tell(processID, "AXFocusedUIElementChanged", element);
}

void ScriptedAccessibility::edit(std::int64_t processID, const ObjectRef& element, std::u16string text,
                                 TextRange selection) {
  at(element).text = std::move(text);
  at(element).selection = selection;
  tell(processID, "AXValueChanged", element);
  tell(processID, "AXSelectedTextChanged", element);
}

bool ScriptedAccessibility::Listeners::isWatching(std::int64_t process, const ObjectRef& element) const {
  return std::ranges::any_of(watches, [&](const auto& watch) {
    return watch->process == process && element && watch->element->same(*element);
  });
}

void ScriptedAccessibility::tell(std::int64_t processID, const std::string& name, const ObjectRef& element) {
  const bool ofElement = name == "AXValueChanged" || name == "AXSelectedTextChanged";
  loop_.post([weak = std::weak_ptr(listeners_), processID, name, element, ofElement] {
    const auto listeners = weak.lock();
    if (!listeners || (ofElement && !listeners->isWatching(processID, element))) return;
    for (const auto& observer : std::list(listeners->observers)) {
      const bool present = std::ranges::find(listeners->observers, observer) != listeners->observers.end();
      if (present && observer->process == processID) observer->notify(name, element);
    }
  });
}

ObjectRef ScriptedAccessibility::application(std::int64_t processID) {
  const auto found = applications_.find(processID);
  return found == applications_.end() ? nullptr : found->second;
}

std::vector<AttributeValue> ScriptedAccessibility::read(const ObjectRef& element,
                                                        std::span<const AttributeRead> reads) {
  return readWithin(messagingTimeout, element, reads);
}

std::vector<AttributeValue> ScriptedAccessibility::readBriefly(const ObjectRef& element,
                                                               std::span<const AttributeRead> reads) {
  return readWithin(briefTimeout, element, reads);
}

std::vector<AttributeValue> ScriptedAccessibility::readWithin(double seconds, const ObjectRef& element,
                                                              std::span<const AttributeRead> reads) {
  ++batches;
  if (beforeRead) beforeRead(element);
  std::vector<AttributeValue> values(reads.size());
  for (const auto& read : reads)
    if (asksForText(read)) askedTexts.push_back({element, read});
  if (hangs) {
    secondsLost += seconds;
    return values;
  }
  for (std::size_t i = 0; i < reads.size(); ++i) values[i] = answer(element, reads[i]);
  return values;
}

AttributeValue ScriptedAccessibility::answer(const ObjectRef& ref, const AttributeRead& read) {
  const auto place = elements_.find(ref->hash());
  if (place == elements_.end()) return {};
  const ScriptedElement& element = place->second;
  if (element.failing.contains(read.attribute)) return {};
  if (element.lies)
    if (const auto lie = element.lies(read)) return *lie;
  if (const auto found = element.attributes.find(read.attribute); found != element.attributes.end())
    return found->second;
  if (!element.text) return {};
  const AttributeValue value = answerInText(element, read);
  const bool known = !std::holds_alternative<std::monostate>(value);
  return known || !element.hasMarkers ? value : answerThroughMarkers(element, ref, read);
}

bool ScriptedAccessibility::write(const ObjectRef& element, std::string_view attribute,
                                  const AttributeValue& value) {
  written.push_back({element, std::string(attribute), value});
  if (!elements_.contains(element->hash())) return false;
  ScriptedElement& target = at(element);
  if (hangs || target.refusesWrites) return false;
  if (attribute == "AXSelectedText") {
    const auto* text = std::get_if<std::string>(&value);
    if (!text || !target.text) return false;
    replaceSelection(element, *text);
    return true;
  }
  if (attribute == "AXSelectedTextRange") {
    const auto* range = std::get_if<TextRange>(&value);
    if (!range || !target.text) return false;
    target.selection = clipped(*range, *target.text);
    return true;
  }
  target.attributes[std::string(attribute)] = value;
  return true;
}

void ScriptedAccessibility::replaceSelection(const ObjectRef& ref, const std::string& text) {
  ScriptedElement& element = at(ref);
  const std::u16string units = text::toUtf16(text);
  std::u16string content = *element.text;
  content.replace(static_cast<std::size_t>(element.selection.location),
                  static_cast<std::size_t>(element.selection.length), units);
  const TextRange caret{element.selection.location + static_cast<std::int64_t>(units.size()), 0};
  for (const auto& watch : std::list(listeners_->watches))
    if (watch->element->same(*ref)) return edit(watch->process, ref, std::move(content), caret);
  element.text = std::move(content);
  element.selection = caret;
}

std::optional<Task> ScriptedAccessibility::observe(std::int64_t processID, Notification notify) {
  if (!observable || !application(processID)) return std::nullopt;
  auto observer = std::make_shared<Observer>(Observer{processID, std::move(notify)});
  listeners_->observers.push_back(observer);
  return Task([weak = std::weak_ptr(listeners_), observer] {
    if (const auto listeners = weak.lock()) listeners->observers.remove(observer);
  });
}

std::optional<Task> ScriptedAccessibility::watch(std::int64_t processID, const ObjectRef& element) {
  auto watched = std::make_shared<Watch>(Watch{processID, element});
  listeners_->watches.push_back(watched);
  return Task([weak = std::weak_ptr(listeners_), watched] {
    if (const auto listeners = weak.lock()) listeners->watches.remove(watched);
  });
}

}  // namespace nimbletype
