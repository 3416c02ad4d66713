#include "platform/linux/accessibility/text/atspi_text.h"

#include <algorithm>
#include <charconv>
#include <string>
#include <tuple>

namespace nimbletype {
namespace {

// More than the core asks for on either side of the caret, and from the beginning in all but long texts.
constexpr std::int64_t windowBefore = 20'000, windowAfter = 700;

std::optional<std::int64_t> integerOf(GVariant* v) {
  if (!v || !g_variant_is_of_type(v, G_VARIANT_TYPE_INT32)) return std::nullopt;
  return g_variant_get_int32(v);
}

DBusCall selectionCall(const AtspiRef& element) {
  return {element->bus(), element->path(), atspi::textInterface, "GetSelection", g_variant_new("(i)", 0)};
}

AtspiOffsets offsetsFor(AtspiBus& bus, const AtspiTextPosition& at, bool wholeText, Deadline deadline) {
  const std::int64_t from = wholeText ? 0 : std::max<std::int64_t>(0, at.start - windowBefore);
  const std::int64_t to = wholeText ? at.count : std::min(at.count, at.end + windowAfter);
  DBusBatch batch(bus.connection(), deadline);
  const auto text = batch.call({at.element->bus(), at.element->path(), atspi::textInterface, "GetText",
                                g_variant_new("(ii)", static_cast<gint32>(from), static_cast<gint32>(to))});
  batch.wait();
  return {from, stringOf(childOf(batch.reply(text), 0).get())};
}

// The first family of a list, without its quotes.
std::string familyOf(std::string_view value) {
  value = value.substr(0, value.find(','));
  const auto isPadding = [](char c) { return c == ' ' || c == '"' || c == '\''; };
  while (!value.empty() && isPadding(value.front())) value.remove_prefix(1);
  while (!value.empty() && isPadding(value.back())) value.remove_suffix(1);
  return std::string(value);
}

// "11", "11.5pt" or "15px".
std::optional<double> sizeOf(std::string_view value, double dotsPerInch) {
  double number = 0;
  const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), number);
  if (error != std::errc() || number <= 0) return std::nullopt;
  const std::string_view unit(end, static_cast<std::size_t>(value.data() + value.size() - end));
  return unit == "px" ? number : number * dotsPerInch / 72;
}

}  // namespace

TextRange AtspiTextPosition::selection() const {
  const std::int64_t from = offsets.toUtf16(start);
  return {from, offsets.toUtf16(end) - from};
}

TextRange AtspiTextPosition::own(const TextRange& range) const {
  const std::int64_t from = std::clamp<std::int64_t>(offsets.fromUtf16(range.location), 0, count);
  const std::int64_t to = offsets.endFromUtf16(range.location + range.length);
  return {from, std::clamp<std::int64_t>(to, from, count) - from};
}

AtspiPositionReading::AtspiPositionReading(DBusBatch& batch, AtspiRef element, bool asksSelection)
    : batch_(batch), element_(std::move(element)) {
  const auto& bus = element_->bus();
  const auto& path = element_->path();
  role_ = batch.call({bus, path, atspi::accessible, "GetRole", nullptr});
  states_ = batch.call({bus, path, atspi::accessible, "GetState", nullptr});
  caret_ = batch.property(bus, path, atspi::textInterface, "CaretOffset");
  count_ = batch.property(bus, path, atspi::textInterface, "CharacterCount");
  selections_ = batch.call({bus, path, atspi::textInterface, "GetNSelections", nullptr});
  if (asksSelection) selection_ = batch.call(selectionCall(element_));
}

bool AtspiPositionReading::isEditable() const {
  return atspi::roleOf(batch_.reply(role_)) != atspi_role::passwordText &&
         atspi::statesOf(batch_.reply(states_)).has(atspi_state::editable);
}

// An empty range when it is not told.
std::pair<std::int64_t, std::int64_t> AtspiPositionReading::selection(AtspiBus& bus,
                                                                      Deadline deadline) const {
  const auto ends = [](GVariant* reply) {
    const auto from = integerOf(childOf(reply, 0).get()), to = integerOf(childOf(reply, 1).get());
    return from && to ? std::pair(std::min(*from, *to), std::max(*from, *to))
                      : std::pair<std::int64_t, std::int64_t>();
  };
  if (selection_) return ends(batch_.reply(*selection_));
  DBusBatch batch(bus.connection(), deadline);
  const auto asked = batch.call(selectionCall(element_));
  batch.wait();
  return ends(batch.reply(asked));
}

AtspiTextPosition AtspiPositionReading::finish(AtspiBus& bus, Deadline deadline, Extent extent) const {
  AtspiTextPosition at;
  at.element = element_;
  at.role = atspi::roleOf(batch_.reply(role_));
  at.states = atspi::statesOf(batch_.reply(states_));
  // An element that does not say what it is might be a password field.
  at.isSecure = !batch_.reply(role_) || at.role == atspi_role::passwordText;
  const auto caret = integerOf(batch_.reply(caret_));
  at.count = integerOf(batch_.reply(count_)).value_or(0);
  at.hasCaret = caret && *caret >= 0 && batch_.reply(count_);
  at.start = at.end = caret.value_or(0);
  if (integerOf(childOf(batch_.reply(selections_), 0).get()).value_or(0) > 0)
    if (const auto [from, to] = selection(bus, deadline); from < to)
      std::tie(at.start, at.end) = std::pair(from, to);
  at.unit = bus.toolkit(element_->bus(), deadline).unit;
  if (at.hasCaret && !at.isSecure && at.unit == OffsetUnit::codePoint && extent != Extent::none)
    at.offsets = offsetsFor(bus, at, extent == Extent::all, deadline);
  return at;
}

TextFont fontOf(GVariant* attributeRun, double dotsPerInch) {
  TextFont font;
  const VariantPtr attributes = childOf(attributeRun, 0);
  if (!attributes || !g_variant_is_of_type(attributes.get(), G_VARIANT_TYPE("a{ss}"))) return font;
  for (gsize i = 0; i < g_variant_n_children(attributes.get()); ++i) {
    const VariantPtr entry = childOf(attributes.get(), i);
    const std::string name = stringOf(childOf(entry.get(), 0).get());
    const std::string value = stringOf(childOf(entry.get(), 1).get());
    if (name == "family-name" && !familyOf(value).empty()) font.name = familyOf(value);
    if (name == "size") font.size = sizeOf(value, dotsPerInch);
  }
  return font;
}

}  // namespace nimbletype
