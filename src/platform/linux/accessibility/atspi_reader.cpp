#include "platform/linux/accessibility/atspi_reader.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <string>

#include "text/right_to_left.h"

namespace nimbletype {
namespace {

constexpr std::uint32_t screenCoordinates = 0;
constexpr std::int32_t mostChildren = 500;
constexpr std::int64_t longestValue = 20'000;  // characters of an "AXValue"

constexpr std::string_view boundsForRange = "AXBoundsForRange";
using Decode = std::function<AttributeValue(const DBusBatch&)>;

AttributeValue textValue(std::string text) {
  return text.empty() ? AttributeValue() : AttributeValue(std::move(text));
}

// A box without height is no box: what applications answer for places they know nothing about.
AttributeValue rectOf(GVariant* fourInts) {
  std::array<double, 4> n{};
  for (gsize i = 0; i < n.size(); ++i) {
    const VariantPtr number = childOf(fourInts, i);
    if (!number || !g_variant_is_of_type(number.get(), G_VARIANT_TYPE_INT32)) return {};
    n[i] = g_variant_get_int32(number.get());
  }
  return n[3] > 0 && n[2] >= 0 ? TopLeftRect{n[0], n[1], n[2], n[3]} : TopLeftRect{};
}

DBusCall callOn(const AtspiRef& element, const char* interface, const char* method,
                GVariant* arguments = nullptr) {
  return {element->bus(), element->path(), interface, method, arguments};
}

Decode askRole(DBusBatch& batch, const AtspiRef& element) {
  const auto role = batch.call(callOn(element, atspi::accessible, "GetRole"));
  const auto states = batch.call(callOn(element, atspi::accessible, "GetState"));
  return [=](const DBusBatch& b) -> AttributeValue {
    if (!b.reply(role)) return {};
    return std::string(accessibilityRole(atspi::roleOf(b.reply(role)), atspi::statesOf(b.reply(states))));
  };
}

Decode askSubrole(DBusBatch& batch, const AtspiRef& element) {
  const auto role = batch.call(callOn(element, atspi::accessible, "GetRole"));
  return [=](const DBusBatch& b) -> AttributeValue {
    const bool secure = atspi::roleOf(b.reply(role)) == atspi_role::passwordText;
    return secure ? AttributeValue(std::string("AXSecureTextField")) : AttributeValue();
  };
}

Decode askSettable(DBusBatch& batch, const AtspiRef& element) {
  const auto states = batch.call(callOn(element, atspi::accessible, "GetState"));
  return [=](const DBusBatch& b) -> AttributeValue {
    if (!b.reply(states)) return {};
    return atspi::statesOf(b.reply(states)).has(atspi_state::editable);
  };
}

Decode askTitle(DBusBatch& batch, const AtspiRef& element) {
  const auto name = batch.property(element->bus(), element->path(), atspi::accessible, "Name");
  return [=](const DBusBatch& b) { return textValue(stringOf(b.reply(name))); };
}

Decode askFrame(DBusBatch& batch, const AtspiRef& element) {
  const auto box =
      batch.call(callOn(element, atspi::component, "GetExtents", g_variant_new("(u)", screenCoordinates)));
  return [=](const DBusBatch& b) { return rectOf(childOf(b.reply(box), 0).get()); };
}

Decode askParent(DBusBatch& batch, const AtspiRef& element) {
  const auto parent = batch.property(element->bus(), element->path(), atspi::accessible, "Parent");
  return [=](const DBusBatch& b) -> AttributeValue {
    const AtspiRef object = atspi::objectOf(b.reply(parent));
    return object ? AttributeValue(ObjectRef(object)) : AttributeValue();
  };
}

// Browsers differ in what they call it.
Decode askUrl(DBusBatch& batch, const AtspiRef& element) {
  const auto uri =
      batch.call(callOn(element, atspi::document, "GetAttributeValue", g_variant_new("(s)", "URI")));
  const auto url =
      batch.call(callOn(element, atspi::document, "GetAttributeValue", g_variant_new("(s)", "DocURL")));
  return [=](const DBusBatch& b) {
    const std::string first = stringOf(childOf(b.reply(uri), 0).get());
    return textValue(first.empty() ? stringOf(childOf(b.reply(url), 0).get()) : first);
  };
}

Decode askPlain(DBusBatch& batch, const AtspiRef& element, std::string_view attribute) {
  if (attribute == "AXRole") return askRole(batch, element);
  if (attribute == "AXSubrole") return askSubrole(batch, element);
  if (attribute == "AXIsSettable:AXValue") return askSettable(batch, element);
  if (attribute == "AXTitle") return askTitle(batch, element);
  if (attribute == "AXFrame") return askFrame(batch, element);
  if (attribute == "AXParent") return askParent(batch, element);
  if (attribute == "AXURL") return askUrl(batch, element);
  return nullptr;
}

Decode askString(DBusBatch& batch, const AtspiRef& element, const TextRange& own) {
  const auto text = batch.call(callOn(element, atspi::textInterface, "GetText",
                                      g_variant_new("(ii)", static_cast<gint32>(own.location),
                                                    static_cast<gint32>(own.location + own.length))));
  return [=](const DBusBatch& b) -> AttributeValue {
    return b.reply(text) ? AttributeValue(stringOf(childOf(b.reply(text), 0).get())) : AttributeValue();
  };
}

// An empty range is the place where the caret would stand: the left edge of the character there.
Decode askBounds(DBusBatch& batch, const AtspiRef& element, const TextRange& own) {
  const auto from = static_cast<gint32>(own.location), to = static_cast<gint32>(own.location + own.length);
  const auto box = own.length <= 1 ? batch.call(callOn(element, atspi::textInterface, "GetCharacterExtents",
                                                       g_variant_new("(iu)", from, screenCoordinates)))
                                   : batch.call(callOn(element, atspi::textInterface, "GetRangeExtents",
                                                       g_variant_new("(iiu)", from, to, screenCoordinates)));
  return [=, isEmpty = own.length == 0](const DBusBatch& b) {
    AttributeValue value = rectOf(b.reply(box));
    if (auto* rect = std::get_if<TopLeftRect>(&value); rect && isEmpty) rect->width = 0;
    return value;
  };
}

// Text enough to know which way the character before `end` runs.
Decode askTextUpTo(DBusBatch& batch, const AtspiRef& element, std::int64_t end) {
  constexpr std::int64_t enough = 64;
  const std::int64_t from = std::max<std::int64_t>(0, end - enough);
  return askString(batch, element, {from, end - from});
}

bool endsRightToLeft(const AttributeValue& text) {
  const auto* string = std::get_if<std::string>(&text);
  return string && text::endsRightToLeft(*string);
}

// Of characters that run from right to left Qt tells where they begin as if that were their left edge, and
// GTK of the place behind the last one as if it were before the first.
Decode askBoundsBothWays(DBusBatch& batch, const AtspiRef& element, const TextRange& own, bool isQt) {
  auto box = askBounds(batch, element, own);
  const bool isPlace = own.length == 0;
  if (isPlace == isQt) return box;
  const auto upTo = askTextUpTo(batch, element, isPlace ? own.location : own.location + 1);
  return [=](const DBusBatch& b) -> AttributeValue {
    AttributeValue value = box(b);
    if (!endsRightToLeft(upTo(b))) return value;
    if (isPlace) return {};
    if (auto* rect = std::get_if<TopLeftRect>(&value)) rect->x -= rect->width;
    return value;
  };
}

Decode askFont(DBusBatch& batch, const AtspiRef& element, const TextRange& own, double dotsPerInch) {
  const auto run = batch.call(callOn(element, atspi::textInterface, "GetAttributeRun",
                                     g_variant_new("(ib)", static_cast<gint32>(own.location), TRUE)));
  return [=](const DBusBatch& b) -> AttributeValue {
    const TextFont font = fontOf(b.reply(run), dotsPerInch);
    return font.name || font.size ? AttributeValue(font) : AttributeValue();
  };
}

}  // namespace

std::vector<AttributeValue> AtspiReader::read(const AtspiRef& element, std::span<const AttributeRead> reads,
                                              Deadline deadline) {
  Values values(reads.size());
  readPlain(element, reads, deadline, values);
  readInText(element, reads, deadline, values);
  noteBoxes(reads, values);
  toPixels(element, deadline, values);
  return values;
}

void AtspiReader::noteBoxes(std::span<const AttributeRead> reads, const Values& values) {
  foundBoxes_.reset();
  if (!toolkit_.hasPages) return;
  for (std::size_t i = 0; i < reads.size(); ++i) {
    if (reads[i].attribute != boundsForRange) continue;
    const auto* box = std::get_if<TopLeftRect>(&values[i]);
    foundBoxes_ = foundBoxes_.value_or(false) || (box && box->height > 0);
  }
}

// Places and sizes as the screen has them.
void AtspiReader::toPixels(const AtspiRef& element, Deadline deadline, Values& values) {
  const auto isBox = [](const AttributeValue& value) {
    const auto* rect = std::get_if<TopLeftRect>(&value);
    return rect && rect->height > 0;
  };
  const auto isFont = [](const AttributeValue& value) { return std::holds_alternative<TextFont>(value); };
  const bool hasBox = std::ranges::any_of(values, isBox);
  if (!hasBox && std::ranges::none_of(values, isFont)) return;
  const double scale = scale_.of(element, deadline);
  const auto shift = hasBox ? shift_.of(element, deadline) : AtspiContentShift::Shift{};
  for (AttributeValue& value : values) {
    if (isBox(value)) {
      auto& rect = std::get<TopLeftRect>(value);
      rect = {(rect.x + shift.x) * scale, (rect.y + shift.y) * scale, rect.width * scale,
              rect.height * scale};
    } else if (isFont(value)) {
      auto& size = std::get<TextFont>(value).size;
      if (size) *size *= scale;
    }
  }
}

AttributeValue AtspiReader::readList(const AtspiRef& element, const AttributeRead& read,
                                     Deadline deadline) const {
  if (read.attribute == "AXWindows" && !element->isApplication()) return {};
  const bool all = read.attribute == "AXChildren" || read.attribute == "AXWindows";
  if (!all && read.attribute != "AXVisibleChildren") return {};
  const auto children = atspi::childrenWithin(bus_, element, mostChildren, deadline);
  if (!children) return {};
  const auto wanted = all ? *children : atspi::shownOf(bus_, *children, deadline);
  return ObjectList(wanted.begin(), wanted.end());
}

AttributeValue AtspiReader::readFocus(const AtspiRef& application, const AttributeRead& read,
                                      Deadline deadline) {
  AtspiRef found;
  if (read.attribute == "AXFocusedUIElement") found = focus_.element(application->bus(), deadline);
  if (read.attribute == "AXFocusedWindow") found = focus_.window(application->bus(), deadline);
  return found ? AttributeValue(ObjectRef(found)) : AttributeValue();
}

bool AtspiReader::needsPosition(const AtspiRef& element, std::span<const AttributeRead> reads) const {
  return std::ranges::any_of(reads, [&](const AttributeRead& r) {
    if (r.attribute == "AXSelectedTextRange" || r.attribute == "AXNumberOfCharacters" ||
        r.attribute == "AXValue")
      return true;
    return std::holds_alternative<TextRange>(r.parameter) && !sameObject(position_.element, element);
  });
}

void AtspiReader::readPlain(const AtspiRef& element, std::span<const AttributeRead> reads, Deadline deadline,
                            Values& values) {
  DBusBatch batch(bus_.connection(), deadline);
  std::vector<Decode> decoders(reads.size());
  for (std::size_t i = 0; i < reads.size(); ++i)
    if (std::holds_alternative<std::monostate>(reads[i].parameter))
      decoders[i] = askPlain(batch, element, reads[i].attribute);
  std::optional<AtspiPositionReading> position;
  if (needsPosition(element, reads)) position.emplace(batch, element, !richReader_.isRich(element));
  batch.wait();
  for (std::size_t i = 0; i < reads.size(); ++i) {
    if (decoders[i]) values[i] = decoders[i](batch);
    if (!decoders[i]) values[i] = readList(element, reads[i], deadline);
    const bool isAnswered = decoders[i] || values[i] != AttributeValue();
    if (element->isApplication() && !isAnswered) values[i] = readFocus(element, reads[i], deadline);
  }
  if (!position) return;
  using Extent = AtspiPositionReading::Extent;
  const bool isRich = position->isEditable() && richReader_.looksRich(element, deadline);
  position_ = position->finish(bus_, deadline, isRich ? Extent::none : Extent::aroundCaret);
  rich_ = isRich ? richReader_.read(position_, deadline) : std::nullopt;
  toolkit_ = bus_.toolkit(element->bus(), deadline);
  if (!position_.hasCaret) return;
  for (std::size_t i = 0; i < reads.size(); ++i) {
    if (reads[i].attribute == "AXSelectedTextRange")
      values[i] = rich_ ? rich_->selection() : position_.selection();
    if (reads[i].attribute == "AXNumberOfCharacters")
      values[i] = static_cast<double>(rich_ ? rich_->size() : position_.offsets.toUtf16(position_.count));
  }
}

void AtspiReader::forget(const AtspiRef& element) {
  const bool isPart = position_.element && richReader_.isWithin(element, position_.element);
  if (isPart || sameObject(position_.element, element)) position_ = {};
  richReader_.forget(element);
}

void AtspiReader::readInText(const AtspiRef& element, std::span<const AttributeRead> reads, Deadline deadline,
                             Values& values) {
  if (!sameObject(position_.element, element) || position_.isSecure) return;
  if (rich_) return readInRichText(reads, deadline, values);
  DBusBatch batch(bus_.connection(), deadline);
  std::vector<Decode> decoders(reads.size());
  bool asksForBoxes = false;
  for (std::size_t i = 0; i < reads.size(); ++i) {
    decoders[i] = askInText(batch, reads[i]);
    asksForBoxes = asksForBoxes || (decoders[i] && reads[i].attribute == boundsForRange);
  }
  if (asksForBoxes) flatLines_.ask(batch, position_);
  batch.wait();
  const std::int64_t trustedEnd =
      asksForBoxes ? flatLines_.trustedEnd(batch, position_, bus_, deadline) : AtspiFlatLines::everywhere;
  const double missingMargin = asksForBoxes ? flatLines_.missingMargin(batch) : 0;
  for (std::size_t i = 0; i < reads.size(); ++i) {
    if (!decoders[i]) continue;
    values[i] = decoders[i](batch);
    if (reads[i].attribute != boundsForRange) continue;
    auto* box = std::get_if<TopLeftRect>(&values[i]);
    if (!box || box->height <= 0) continue;
    const auto offset = position_.own(std::get<TextRange>(reads[i].parameter)).location;
    const auto missing = offset > trustedEnd
                             ? flatLines_.missingHeight(batch, position_, offset, bus_, deadline)
                             : missingMargin;
    if (missing)
      box->y += *missing;
    else
      values[i] = TopLeftRect{};
  }
}

AtspiReader::Decode AtspiReader::askInText(DBusBatch& batch, const AttributeRead& read) const {
  if (read.attribute == "AXValue" && position_.count > 0)
    return askString(batch, position_.element, {0, std::min(position_.count, longestValue)});
  const auto* range = std::get_if<TextRange>(&read.parameter);
  if (!range) return nullptr;
  const TextRange own = position_.own(*range);
  if (read.attribute == "AXStringForRange") return askString(batch, position_.element, own);
  if (read.attribute == boundsForRange)
    return toolkit_.isQt || toolkit_.isGtk ? askBoundsBothWays(batch, position_.element, own, toolkit_.isQt)
                                           : askBounds(batch, position_.element, own);
  if (read.attribute == "AXFontForRange") return askFont(batch, position_.element, own, fontDotsPerInch_);
  return nullptr;
}

void AtspiReader::readInRichText(std::span<const AttributeRead> reads, Deadline deadline,
                                 Values& values) const {
  DBusBatch batch(bus_.connection(), deadline);
  std::vector<Decode> decoders(reads.size());
  for (std::size_t i = 0; i < reads.size(); ++i) decoders[i] = askInRichText(batch, reads[i]);
  batch.wait();
  for (std::size_t i = 0; i < reads.size(); ++i)
    if (decoders[i]) values[i] = decoders[i](batch);
}

AtspiReader::Decode AtspiReader::askInRichText(DBusBatch& batch, const AttributeRead& read) const {
  const auto answer = [](std::string text) {
    return [text = std::move(text)](const DBusBatch&) -> AttributeValue { return text; };
  };
  if (read.attribute == "AXValue" && rich_->size() > 0) return answer(rich_->text({0, longestValue}));
  const auto* range = std::get_if<TextRange>(&read.parameter);
  if (!range) return nullptr;
  if (read.attribute == "AXStringForRange") return answer(rich_->text(*range));
  const auto place = rich_->placeOf(*range);
  if (!place) return nullptr;
  const TextRange own{place->start, place->end - place->start};
  if (read.attribute == boundsForRange) return askBounds(batch, place->element, own);
  if (read.attribute == "AXFontForRange") return askFont(batch, place->element, own, fontDotsPerInch_);
  return nullptr;
}

}  // namespace nimbletype
