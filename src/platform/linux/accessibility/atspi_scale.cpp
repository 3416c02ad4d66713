#include "platform/linux/accessibility/atspi_scale.h"

#include <cmath>

#include "platform/linux/accessibility/tree/atspi_search.h"

namespace nimbletype {
namespace {

// Windows rarely move to a screen of another scale.
constexpr std::int64_t lasting = 2'000'000;  // µs
constexpr double steps = 4, tolerance = 0.01;

std::optional<std::uint32_t> numberIn(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t name,
                                      xcb_atom_t type) {
  const XcbReply<xcb_get_property_reply_t> reply(
      xcb_get_property_reply(connection, xcb_get_property(connection, 0, window, name, type, 0, 1), nullptr));
  if (!reply || reply->format != 32 || xcb_get_property_value_length(reply.get()) < 4) return std::nullopt;
  return *static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
}

}  // namespace

double applicationScale(double pixels, double told) {
  if (told <= 0) return 1;
  const double ratio = pixels / told, step = std::round(ratio * steps) / steps;
  return step > 1 && std::abs(ratio - step) <= tolerance * step ? step : 1;
}

double AtspiScale::of(const AtspiRef& element, Deadline deadline) {
  if (!connection_) return 1;
  // These tell of their content in pixels, whatever they say of their windows.
  const AtspiToolkit toolkit = bus_.toolkit(element->bus(), deadline);
  if (toolkit.hasPages || toolkit.isOffice) return 1;
  const AtspiRef window = focus_.window(element->bus(), deadline);
  if (!window) return 1;
  if (sameObject(window_, window) && g_get_monotonic_time() < measureAgain_) return scale_;
  const auto process = bus_.processOf(element->bus());
  const auto pixels = process ? activeWindowWidth(*process) : std::nullopt;
  const auto told = pixels ? toldWidth(window, deadline) : std::nullopt;
  if (!told) return sameObject(window_, window) ? scale_ : 1;
  window_ = window;
  scale_ = applicationScale(*pixels, *told);
  measureAgain_ = g_get_monotonic_time() + lasting;
  return scale_;
}

std::optional<double> AtspiScale::activeWindowWidth(std::int64_t process) const {
  xcb_connection_t* x11 = connection_.get();
  const auto window = numberIn(x11, rootWindow(x11), atomNamed(x11, "_NET_ACTIVE_WINDOW"), XCB_ATOM_WINDOW);
  if (!window) return std::nullopt;
  const auto owner = numberIn(x11, *window, atomNamed(x11, "_NET_WM_PID"), XCB_ATOM_CARDINAL);
  if (owner != static_cast<std::uint32_t>(process)) return std::nullopt;
  const XcbReply<xcb_get_geometry_reply_t> place(
      xcb_get_geometry_reply(x11, xcb_get_geometry(x11, *window), nullptr));
  return place ? std::optional<double>(place->width) : std::nullopt;
}

std::optional<double> AtspiScale::toldWidth(const AtspiRef& window, Deadline deadline) const {
  DBusBatch batch(bus_.connection(), deadline);
  const auto box =
      batch.call({window->bus(), window->path(), atspi::component, "GetExtents", g_variant_new("(u)", 0u)});
  batch.wait();
  const VariantPtr extents = childOf(batch.reply(box), 0), width = childOf(extents.get(), 2);
  if (!width || !g_variant_is_of_type(width.get(), G_VARIANT_TYPE_INT32)) return std::nullopt;
  return g_variant_get_int32(width.get());
}

}  // namespace nimbletype
