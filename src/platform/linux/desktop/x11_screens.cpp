#include "platform/linux/desktop/x11_screens.h"

#include <xcb/randr.h>

#include <QGuiApplication>
#include <QPalette>
#include <QRect>
#include <algorithm>

#include "platform/linux/x11/screen_background.h"
#include "platform/linux/x11/x11_image.h"

namespace nimbletype {
namespace {

constexpr std::uint8_t sentBit = 0x80;
constexpr int widestCaret = 2;

// Monitors as people see them are known from RandR 1.5 on.
bool knowsMonitors(xcb_connection_t* connection) {
  if (!xcb_get_extension_data(connection, &xcb_randr_id)->present) return false;
  constexpr std::uint32_t major = 1, minor = 5;
  const XcbReply<xcb_randr_query_version_reply_t> version(
      xcb_randr_query_version_reply(connection, xcb_randr_query_version(connection, major, minor), nullptr));
  return version && std::pair(version->major_version, version->minor_version) >= std::pair(major, minor);
}

std::vector<QRect> monitors(xcb_connection_t* connection) {
  constexpr std::uint8_t inUse = 1;
  const XcbReply<xcb_randr_get_monitors_reply_t> reply(xcb_randr_get_monitors_reply(
      connection, xcb_randr_get_monitors(connection, rootWindow(connection), inUse), nullptr));
  std::vector<QRect> places;
  if (!reply) return places;
  for (auto each = xcb_randr_get_monitors_monitors_iterator(reply.get()); each.rem;
       xcb_randr_monitor_info_next(&each)) {
    const QRect place(each.data->x, each.data->y, each.data->width, each.data->height);
    if (!place.isEmpty()) places.push_back(place);
  }
  return places;
}

// What panels leave free; window managers tell it of each of their desktops, which rarely differ.
std::optional<QRect> workArea(xcb_connection_t* connection, xcb_atom_t name) {
  const auto asked = xcb_get_property(connection, 0, rootWindow(connection), name, XCB_ATOM_CARDINAL, 0, 4);
  const XcbReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection, asked, nullptr));
  if (!reply || reply->format != 32 || reply->value_len < 4) return std::nullopt;
  const auto* numbers = static_cast<const std::int32_t*>(xcb_get_property_value(reply.get()));
  return QRect(numbers[0], numbers[1], numbers[2], numbers[3]);
}

const QRect& mainOf(const std::vector<QRect>& places) {
  const auto atZero = std::ranges::find(places, QPoint(), [](const QRect& place) { return place.topLeft(); });
  return atZero == places.end() ? places.front() : *atZero;
}

BottomLeftRect flippedRect(const QRect& rect, double mainHeight) {
  return flipped(TopLeftRect(rect.x(), rect.y(), rect.width(), rect.height()), mainHeight);
}

bool isDarkColor(const QColor& color) {
  return color.lightnessF() < 0.5F;
}

// A middling background counts as dark: the light grey of a ghost stands out from it more than the dark one.
bool isDarkBackground(const QColor& color) {
  return qGray(color.rgb()) < 180;
}

}  // namespace

X11Screens::X11Screens() : connection_(connectToDisplay("")) {
  if (!connection_) return;
  workArea_ = atomNamed(connection_.get(), "_NET_WORKAREA");
  if (knowsMonitors(connection_.get()))
    firstMonitorEvent_ = xcb_get_extension_data(connection_.get(), &xcb_randr_id)->first_event;
  listen();
}

void X11Screens::listen() {
  xcb_connection_t* x11 = connection_.get();
  const std::uint32_t changes = XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE;
  xcb_change_window_attributes(x11, rootWindow(x11), XCB_CW_EVENT_MASK, &changes);
  if (firstMonitorEvent_)
    xcb_randr_select_input(x11, rootWindow(x11),
                           XCB_RANDR_NOTIFY_MASK_SCREEN_CHANGE | XCB_RANDR_NOTIFY_MASK_CRTC_CHANGE |
                               XCB_RANDR_NOTIFY_MASK_OUTPUT_CHANGE);
  events_.emplace(x11, [this](const xcb_generic_event_t& event) { handle(event); });
}

void X11Screens::handle(const xcb_generic_event_t& event) {
  const int type = event.response_type & ~sentBit;
  const bool isMonitors =
      firstMonitorEvent_ && type >= *firstMonitorEvent_ && type <= *firstMonitorEvent_ + XCB_RANDR_NOTIFY;
  const bool isWorkArea = type == XCB_PROPERTY_NOTIFY &&
                          reinterpret_cast<const xcb_property_notify_event_t&>(event).atom == workArea_;
  if (isMonitors || isWorkArea || type == XCB_CONFIGURE_NOTIFY) layout_.reset();
}

const X11Screens::Layout& X11Screens::current() const {
  if (!layout_) layout_ = read();
  return *layout_;
}

X11Screens::Layout X11Screens::read() const {
  xcb_connection_t* x11 = connection_.get();
  if (!x11) return {};
  std::vector<QRect> places = firstMonitorEvent_ ? monitors(x11) : std::vector<QRect>();
  if (places.empty()) places.push_back(x11Bounds(x11, rootWindow(x11)));
  const auto free = workArea(x11, workArea_);
  Layout layout{{}, static_cast<double>(mainOf(places).height())};
  for (const QRect& place : places) {
    const QRect visible = free ? place & *free : place;
    layout.screens.push_back({flippedRect(place, layout.mainHeight),
                              flippedRect(visible.isEmpty() ? place : visible, layout.mainHeight)});
  }
  return layout;
}

bool X11Screens::isDark() const {
  return isDarkColor(QGuiApplication::palette().color(QPalette::Window));
}

bool X11Screens::isDarkAt(const BottomLeftRect& rect) const {
  if (!connection_) return isDark();
  const TopLeftRect place = flipped(rect, mainHeight());
  const QRect pixels(qRound(place.x), qRound(place.y), qRound(place.width), qRound(place.height));
  const bool isCaret = pixels.width() <= widestCaret;
  const auto background =
      isCaret ? backgroundBeside(connection_.get(), pixels) : backgroundOf(connection_.get(), pixels);
  return background ? isDarkBackground(*background) : isDark();
}

}  // namespace nimbletype
