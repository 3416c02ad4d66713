#pragma once
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "platform/desktop/workspace.h"
#include "platform/linux/desktop/desktop_entries.h"
#include "platform/linux/x11/xcb_source.h"

namespace nimbletype {

// The windows that the window manager looks after on the X display of the environment, and the applications
// they belong to. Knows of no window where there is no display. Needs a GLib main loop on the default
// context.
class X11Clients {
 public:
  enum class Change { front, windows };
  using Listener = std::function<void(Change)>;
  X11Clients(std::shared_ptr<DesktopEntries> entries, Listener changed);

  std::optional<xcb_window_t> active() const;
  std::vector<xcb_window_t> all() const;      // those out of sight included
  std::vector<xcb_window_t> stacked() const;  // from the bottom up
  // None when the window does not name its process.
  std::optional<RunningApp> appOf(xcb_window_t window);
  // None when it is not on the screen.
  std::optional<ScreenWindow> inSight(xcb_window_t window);
  // Whether the application wants to be asked before the window goes.
  bool canAskToClose(xcb_window_t window) const;
  void askToClose(xcb_window_t window);

 private:
  using Property = XcbReply<xcb_get_property_reply_t>;
  xcb_connection_t* connection() const { return connection_.get(); }
  xcb_get_property_cookie_t ask(xcb_window_t window, xcb_atom_t name, xcb_atom_t type) const;
  Property answer(xcb_get_property_cookie_t asked) const;
  std::vector<xcb_window_t> listed(xcb_atom_t name) const;
  void handle(const xcb_generic_event_t& event);

  XcbConnection connection_;
  xcb_atom_t activeWindow_ = XCB_ATOM_NONE, clients_ = XCB_ATOM_NONE, stacking_ = XCB_ATOM_NONE,
             processID_ = XCB_ATOM_NONE, title_ = XCB_ATOM_NONE, gtkApplicationID_ = XCB_ATOM_NONE,
             close_ = XCB_ATOM_NONE, protocols_ = XCB_ATOM_NONE, deleteWindow_ = XCB_ATOM_NONE;
  std::shared_ptr<DesktopEntries> entries_;
  Listener changed_;
  std::unique_ptr<XcbSource> source_;
};

}  // namespace nimbletype
