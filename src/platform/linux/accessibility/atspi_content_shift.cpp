#include "platform/linux/accessibility/atspi_content_shift.h"

#include "platform/linux/accessibility/tree/atspi_search.h"

namespace nimbletype {
namespace {

constexpr int deepest = 3;  // levels between a window and its content
constexpr std::int32_t mostChildren = 20;
// Bars come and go rarely, and two reads of every snapshot ask.
constexpr std::int64_t lasting = 500'000;  // µs

DBusBatch::Id askBox(DBusBatch& batch, const AtspiRef& element) {
  return batch.call(
      {element->bus(), element->path(), atspi::component, "GetExtents", g_variant_new("(u)", 0u)});
}

struct Corner {
  std::int32_t x, y;
};
std::optional<Corner> cornerOf(GVariant* reply) {
  const VariantPtr box = childOf(reply, 0);
  const VariantPtr x = childOf(box.get(), 0), y = childOf(box.get(), 1);
  const auto isNumber = [](const VariantPtr& v) {
    return v && g_variant_is_of_type(v.get(), G_VARIANT_TYPE_INT32);
  };
  if (!isNumber(x) || !isNumber(y)) return std::nullopt;
  return Corner{g_variant_get_int32(x.get()), g_variant_get_int32(y.get())};
}

std::uint32_t roleOf(AtspiBus& bus, const AtspiRef& element, Deadline deadline) {
  DBusBatch batch(bus.connection(), deadline);
  const auto role = batch.call({element->bus(), element->path(), atspi::accessible, "GetRole", nullptr});
  batch.wait();
  return atspi::roleOf(batch.reply(role));
}

}  // namespace

AtspiContentShift::Shift AtspiContentShift::of(const AtspiRef& element, Deadline deadline) {
  if (!bus_.toolkit(element->bus(), deadline).isOffice) return {};
  const AtspiRef window = focus_.window(element->bus(), deadline);
  if (!window || sameObject(window, element)) return {};
  const bool isSame = sameObject(window_, window);
  if (isSame && g_get_monotonic_time() < measureAgain_) return shift_;
  if (!isSame || !content_.pane) content_ = contentOf(window, deadline);
  window_ = window;
  shift_ = measure(deadline).value_or(Shift{});
  measureAgain_ = g_get_monotonic_time() + lasting;
  return shift_;
}

std::optional<AtspiContentShift::Shift> AtspiContentShift::measure(Deadline deadline) const {
  if (!content_.pane) return std::nullopt;
  DBusBatch batch(bus_.connection(), deadline);
  const auto pane = askBox(batch, content_.pane), holder = askBox(batch, content_.holder);
  batch.wait();
  const auto told = cornerOf(batch.reply(pane)), real = cornerOf(batch.reply(holder));
  if (!told || !real) return std::nullopt;
  return Shift{static_cast<double>(real->x - told->x), static_cast<double>(real->y - told->y)};
}

AtspiContentShift::Content AtspiContentShift::contentOf(const AtspiRef& window, Deadline deadline) const {
  std::vector<AtspiRef> level{window};
  for (int depth = 0; depth < deepest; ++depth) {
    std::vector<AtspiRef> next;
    for (const AtspiRef& holder : level)
      for (const AtspiRef& child :
           atspi::childrenWithin(bus_, holder, mostChildren, deadline).value_or(std::vector<AtspiRef>())) {
        if (roleOf(bus_, child, deadline) == atspi_role::rootPane) return {child, holder};
        next.push_back(child);
      }
    level = std::move(next);
  }
  return {};
}

}  // namespace nimbletype
