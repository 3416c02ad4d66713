#include "platform/linux/tray/xembed_host.h"

#include <xcb/xfixes.h>

#include <utility>

namespace nimbletype {

XembedHost::XembedHost(std::function<void()> changed)
    : changed_(std::move(changed)), connection_(connectToDisplay("")) {
  if (!connection_) return;
  tray_ = atomNamed(connection(), "_NET_SYSTEM_TRAY_S0");
  const auto* fixes = xcb_get_extension_data(connection(), &xcb_xfixes_id);
  if (fixes && fixes->present) {
    firstFixesEvent_ = fixes->first_event;
    xcb_discard_reply(connection(), xcb_xfixes_query_version(connection(), 5, 0).sequence);
    xcb_xfixes_select_selection_input(connection(), rootWindow(connection()), tray_,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
  }
  source_ = std::make_unique<XcbSource>(connection(), [this](const xcb_generic_event_t& e) { handle(e); });
}

bool XembedHost::isThere() const {
  if (!connection_) return false;
  const XcbReply<xcb_get_selection_owner_reply_t> owner(
      xcb_get_selection_owner_reply(connection(), xcb_get_selection_owner(connection(), tray_), nullptr));
  return owner && owner->owner != XCB_WINDOW_NONE;
}

void XembedHost::follow(xcb_window_t item) {
  if (!connection_) return;
  // It comes in sight with the window around it, which is not told as its own mapping.
  const std::uint32_t events = XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_VISIBILITY_CHANGE;
  xcb_change_window_attributes(connection(), item, XCB_CW_EVENT_MASK, &events);
  xcb_flush(connection());
}

std::optional<TopLeftRect> XembedHost::frameOf(xcb_window_t item) const {
  if (!connection_) return std::nullopt;
  const xcb_window_t root = rootWindow(connection());
  const auto askedTree = xcb_query_tree(connection(), item);
  const auto askedState = xcb_get_window_attributes(connection(), item);
  const auto askedSize = xcb_get_geometry(connection(), item);
  const auto askedPlace = xcb_translate_coordinates(connection(), item, root, 0, 0);
  const XcbReply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(connection(), askedTree, nullptr));
  const XcbReply<xcb_get_window_attributes_reply_t> state(
      xcb_get_window_attributes_reply(connection(), askedState, nullptr));
  const XcbReply<xcb_get_geometry_reply_t> size(xcb_get_geometry_reply(connection(), askedSize, nullptr));
  const XcbReply<xcb_translate_coordinates_reply_t> place(
      xcb_translate_coordinates_reply(connection(), askedPlace, nullptr));
  if (!tree || tree->parent == root || !state || state->map_state != XCB_MAP_STATE_VIEWABLE || !size ||
      !place)
    return std::nullopt;
  return TopLeftRect{static_cast<double>(place->dst_x), static_cast<double>(place->dst_y),
                     static_cast<double>(size->width), static_cast<double>(size->height)};
}

void XembedHost::handle(const xcb_generic_event_t& event) {
  const auto type = static_cast<std::uint8_t>(event.response_type & 0x7f);
  switch (type) {
    case XCB_REPARENT_NOTIFY:
    case XCB_CONFIGURE_NOTIFY:
    case XCB_MAP_NOTIFY:
    case XCB_UNMAP_NOTIFY:
    case XCB_DESTROY_NOTIFY:
      return changed_();
    default:
      if (firstFixesEvent_ != 0 && type == firstFixesEvent_ + XCB_XFIXES_SELECTION_NOTIFY) changed_();
  }
}

}  // namespace nimbletype
