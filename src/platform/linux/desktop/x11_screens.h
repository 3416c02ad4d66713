#pragma once
#include <optional>

#include "platform/desktop/screens.h"
#include "platform/linux/x11/xcb_source.h"

namespace nimbletype {

// The port over the X server's monitors, in its pixels, whatever scale Qt draws at. Remembers them until the
// server tells of a change. Needs a running QGuiApplication, for its colours.
class X11Screens final : public Screens {
 public:
  X11Screens();

  std::vector<Screen> all() const override { return current().screens; }
  double mainHeight() const override { return current().mainHeight; }
  bool isDark() const override;
  bool isDarkAt(const BottomLeftRect& rect) const override;

 private:
  struct Layout {
    std::vector<Screen> screens;
    double mainHeight = 0;
  };
  const Layout& current() const;
  Layout read() const;
  void listen();
  void handle(const xcb_generic_event_t& event);

  XcbConnection connection_;
  xcb_atom_t workArea_ = XCB_ATOM_NONE;
  std::optional<std::uint8_t> firstMonitorEvent_;
  mutable std::optional<Layout> layout_;
  std::optional<XcbSource> events_;
};

}  // namespace nimbletype
