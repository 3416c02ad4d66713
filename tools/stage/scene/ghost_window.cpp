#include "tools/stage/scene/ghost_window.h"

#include <glib.h>

#include <algorithm>

namespace nimbletype {
namespace {

constexpr std::chrono::milliseconds paintingTime{100};
constexpr std::uint8_t sentBit = 0x80;

bool hasContent(const QImage& picture) {
  if (picture.isNull()) return false;
  const QRgb first = picture.pixel(0, 0);
  for (int y = 0; y < picture.height(); ++y) {
    const auto* row = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
    if (std::any_of(row, row + picture.width(), [&](QRgb pixel) { return pixel != first; })) return true;
  }
  return false;
}

}  // namespace

GhostWindow::GhostWindow(const DesktopWindows& windows, std::uint32_t application)
    : windows_(windows),
      application_(application),
      events_(windows.connection(), [this](const xcb_generic_event_t& event) { handle(event); }) {
  const std::uint32_t events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
  xcb_change_window_attributes(windows.connection(), windows.root(), XCB_CW_EVENT_MASK, &events);
  syncWithServer(windows.connection());
}

GhostWindow::~GhostWindow() {
  stopLooking();
}

std::optional<QRect> GhostWindow::onScreen() const {
  return picture() ? windows_.placeOf(window_) : std::nullopt;
}

void GhostWindow::handle(const xcb_generic_event_t& event) {
  switch (event.response_type & ~sentBit) {
    case XCB_MAP_NOTIFY: {
      const auto& map = reinterpret_cast<const xcb_map_notify_event_t&>(event);
      if (map.override_redirect) adopt(map.window);
      break;
    }
    case XCB_CONFIGURE_NOTIFY: {
      const auto& configure = reinterpret_cast<const xcb_configure_notify_event_t&>(event);
      if (configure.window == window_) adopt(window_);
      break;
    }
    case XCB_UNMAP_NOTIFY:
      if (reinterpret_cast<const xcb_unmap_notify_event_t&>(event).window != window_) break;
      endings_.push_back(Clock::now());
      last_ = {};
      stopLooking();
      break;
  }
}

// The window moves before it is painted: its picture tells when that is done.
void GhostWindow::adopt(xcb_window_t window) {
  if (window != window_ && windows_.processOf(window) != application_) return;
  window_ = window;
  lookUntil_ = Clock::now() + paintingTime;
  const auto again = [](gpointer self) -> gboolean {
    static_cast<GhostWindow*>(self)->look();
    return G_SOURCE_CONTINUE;
  };
  if (looking_ == 0) looking_ = g_timeout_add(1, again, this);
  look();
}

void GhostWindow::look() {
  const auto now = Clock::now();
  auto seen = picture();
  if (seen && *seen != last_) {
    changes_.push_back(now);
    last_ = std::move(*seen);
    stopLooking();
  } else if (now > lookUntil_) {
    stopLooking();
  }
}

void GhostWindow::stopLooking() {
  if (looking_ != 0) g_source_remove(looking_);
  looking_ = 0;
}

std::optional<QImage> GhostWindow::picture() const {
  if (window_ == XCB_WINDOW_NONE || !windows_.isVisible(window_)) return std::nullopt;
  const auto place = windows_.placeOf(window_);
  if (!place) return std::nullopt;
  QImage seen = windows_.pictureOf(window_, QRect(QPoint(), place->size()));
  return hasContent(seen) ? std::optional(std::move(seen)) : std::nullopt;
}

}  // namespace nimbletype
