#pragma once
#include <functional>
#include <memory>
#include <optional>

#include "platform/desktop/geometry.h"
#include "platform/linux/x11/xcb_source.h"

namespace nimbletype {

// The tray that takes status items in as windows, on the X display of the environment. Needs a GLib main loop
// on the default context.
class XembedHost {
 public:
  explicit XembedHost(std::function<void()> changed);

  bool isThere() const;
  // Tells of the window's taking in, leaving and moving from now on.
  void follow(xcb_window_t item);
  // In pixels of the display; none when the tray does not hold the window.
  std::optional<TopLeftRect> frameOf(xcb_window_t item) const;

 private:
  xcb_connection_t* connection() const { return connection_.get(); }
  void handle(const xcb_generic_event_t& event);

  std::function<void()> changed_;
  XcbConnection connection_;
  xcb_atom_t tray_ = XCB_ATOM_NONE;
  std::uint8_t firstFixesEvent_ = 0;
  std::unique_ptr<XcbSource> source_;
};

}  // namespace nimbletype
