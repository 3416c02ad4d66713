#pragma once
#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>
#include <string>

namespace nimbletype {

struct XcbFree {
  void operator()(void* reply) const { std::free(reply); }
};
template <typename T>
using XcbReply = std::unique_ptr<T, XcbFree>;
using XcbEvent = XcbReply<xcb_generic_event_t>;

struct XcbDisconnect {
  void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};
using XcbConnection = std::unique_ptr<xcb_connection_t, XcbDisconnect>;

// None when the display cannot be reached; an empty name means that of the environment.
inline XcbConnection connectToDisplay(const std::string& display) {
  XcbConnection connection(xcb_connect(display.empty() ? nullptr : display.c_str(), nullptr));
  return xcb_connection_has_error(connection.get()) ? nullptr : std::move(connection);
}

inline xcb_window_t rootWindow(xcb_connection_t* connection) {
  return xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
}

inline xcb_atom_t atomNamed(xcb_connection_t* connection, std::string_view name) {
  const auto cookie = xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data());
  const XcbReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection, cookie, nullptr));
  return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

// Returns once the server has done everything asked of it so far. Closing a connection with answers unread
// throws away requests that are still on their way.
inline void syncWithServer(xcb_connection_t* connection) {
  const auto cookie = xcb_get_input_focus(connection);
  XcbReply<xcb_get_input_focus_reply_t>(xcb_get_input_focus_reply(connection, cookie, nullptr));
}

}  // namespace nimbletype
