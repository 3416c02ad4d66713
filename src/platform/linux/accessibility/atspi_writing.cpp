#include "platform/linux/accessibility/atspi_writing.h"

#include <algorithm>

#include "text/text.h"

namespace nimbletype {
namespace {

std::int64_t codePointCount(const std::string& text) {
  return std::ranges::count_if(text, [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; });
}

bool isTrue(GVariant* reply) {
  const VariantPtr value = childOf(reply, 0);
  return value && g_variant_is_of_type(value.get(), G_VARIANT_TYPE_BOOLEAN) &&
         g_variant_get_boolean(value.get());
}

using Extent = AtspiPositionReading::Extent;

AtspiTextPosition positionOf(AtspiBus& bus, const AtspiRef& element, Extent extent, Deadline deadline) {
  DBusBatch batch(bus.connection(), deadline);
  const AtspiPositionReading reading(batch, element);
  batch.wait();
  return reading.finish(bus, deadline, extent);
}

}  // namespace

bool replaceSelection(AtspiBus& bus, const AtspiRef& element, const std::string& text, Deadline deadline) {
  const AtspiTextPosition at = positionOf(bus, element, Extent::aroundCaret, deadline);
  if (!at.hasCaret || !at.states.has(atspi_state::editable)) return false;

  const auto units = static_cast<std::int64_t>(text::utf16Length(text));
  const bool codePoints = at.unit == OffsetUnit::codePoint;
  // Qt takes the length in the units it counts: bytes would add NULs there.
  const bool bytes = bus.toolkit(element->bus(), deadline).insertsBytes;
  const auto length = bytes ? static_cast<std::int64_t>(text.size()) : units;
  const auto start = static_cast<gint32>(at.start);
  const auto caret = static_cast<gint32>(at.start + (codePoints ? codePointCount(text) : units));

  DBusBatch edit(bus.connection(), deadline);
  const auto call = [&](const char* interface, const char* method, GVariant* arguments) {
    return edit.call({element->bus(), element->path(), interface, method, arguments});
  };
  DBusBatch::Id done{};
  if (at.end > at.start)
    done = call(atspi::editableText, "DeleteText", g_variant_new("(ii)", start, static_cast<gint32>(at.end)));
  if (length > 0)
    done = call(atspi::editableText, "InsertText",
                g_variant_new("(isi)", start, text.c_str(), static_cast<gint32>(length)));
  else if (at.end == at.start)
    return true;
  call(atspi::textInterface, "SetCaretOffset", g_variant_new("(i)", caret));
  edit.wait();
  return isTrue(edit.reply(done));
}

// Placing the caret ends any selection there is.
bool select(AtspiBus& bus, const AtspiRef& element, const TextRange& range, Deadline deadline) {
  const AtspiTextPosition at = positionOf(bus, element, Extent::all, deadline);
  if (!at.hasCaret) return false;
  const TextRange own = at.own(range);
  const auto from = static_cast<gint32>(own.location), to = static_cast<gint32>(own.location + own.length);
  DBusBatch batch(bus.connection(), deadline);
  const auto call = [&](const char* method, GVariant* arguments) {
    return batch.call({element->bus(), element->path(), atspi::textInterface, method, arguments});
  };
  auto done = call("SetCaretOffset", g_variant_new("(i)", from));
  if (to > from) done = call("AddSelection", g_variant_new("(ii)", from, to));
  batch.wait();
  return isTrue(batch.reply(done));
}

bool wakeWebContent(AtspiBus& bus, const std::string& application, Deadline deadline) {
  const auto windows = atspi::windowsOf(bus, application, deadline);
  DBusBatch batch(bus.connection(), deadline);
  for (const auto& window : windows)
    batch.call({window->bus(), window->path(), atspi::accessible, "GetAttributes", nullptr});
  batch.wait();
  for (std::size_t i = 0; i < windows.size(); ++i)
    if (batch.reply(i)) return true;
  return false;
}

}  // namespace nimbletype
