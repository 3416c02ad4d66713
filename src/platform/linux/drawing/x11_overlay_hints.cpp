#include "platform/linux/drawing/x11_overlay_hints.h"

#include <xcb/xcb.h>

#include <QGuiApplication>
#include <array>
#include <cstdlib>
#include <memory>
#include <span>
#include <string_view>

namespace nimbletype {
namespace {

struct Free {
  void operator()(void* reply) const { std::free(reply); }
};

xcb_connection_t* x11Connection() {
  const auto* x11 = qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
  return x11 ? x11->connection() : nullptr;
}

xcb_atom_t atomNamed(xcb_connection_t* connection, std::string_view name) {
  const auto cookie = xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data());
  const std::unique_ptr<xcb_intern_atom_reply_t, Free> reply(
      xcb_intern_atom_reply(connection, cookie, nullptr));
  return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

void setProperty(xcb_connection_t* connection, xcb_window_t window, std::string_view name, xcb_atom_t type,
                 std::span<const std::uint32_t> values) {
  xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, atomNamed(connection, name), type, 32,
                      static_cast<std::uint32_t>(values.size()), values.data());
}

}  // namespace

bool x11MixesWindows() {
  xcb_connection_t* connection = x11Connection();
  if (!connection) return false;
  // The compositor of screen 0 owns this selection for as long as it lives.
  static const xcb_atom_t compositor = atomNamed(connection, "_NET_WM_CM_S0");
  const std::unique_ptr<xcb_get_selection_owner_reply_t, Free> owner(
      xcb_get_selection_owner_reply(connection, xcb_get_selection_owner(connection, compositor), nullptr));
  return owner && owner->owner != XCB_NONE;
}

void x11MarkOverlay(std::uint64_t window) {
  xcb_connection_t* connection = x11Connection();
  if (!connection) return;
  const auto id = static_cast<xcb_window_t>(window);
  // What is dragged about gets no shadow, no fixed opacity and no fading for being a tooltip.
  const std::array type{atomNamed(connection, "_NET_WM_WINDOW_TYPE_DND")};
  setProperty(connection, id, "_NET_WM_WINDOW_TYPE", XCB_ATOM_ATOM, type);
  // Windows that draw their own frame are commonly exempt from shadow and blur.
  setProperty(connection, id, "_GTK_FRAME_EXTENTS", XCB_ATOM_CARDINAL, std::array<std::uint32_t, 4>{});
  setProperty(connection, id, "_COMPTON_SHADOW", XCB_ATOM_CARDINAL, std::array<std::uint32_t, 1>{});
  xcb_flush(connection);
}

void x11Flush() {
  if (xcb_connection_t* connection = x11Connection()) xcb_flush(connection);
}

}  // namespace nimbletype
