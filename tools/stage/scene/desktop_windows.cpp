#include "tools/stage/scene/desktop_windows.h"

#include <span>

#include "tools/stage/waiting.h"

namespace nimbletype {
namespace {

constexpr std::uint32_t longestProperty = 1024;

}  // namespace

DesktopWindows::DesktopWindows() : connection_(connectToDisplay("")) {
  if (!connection_) throw GaveUp("found no X display: run it inside tools/stage/with_desktop.sh");
  clientList_ = atomNamed(connection(), "_NET_CLIENT_LIST");
  processID_ = atomNamed(connection(), "_NET_WM_PID");
}

template <typename Use>
void DesktopWindows::withProperty(xcb_window_t window, xcb_atom_t name, Use use) const {
  const auto cookie = xcb_get_property(connection(), 0, window, name, XCB_ATOM_ANY, 0, longestProperty);
  const XcbReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection(), cookie, nullptr));
  if (!reply || reply->format != 32) return;
  use(std::span(static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get())), reply->value_len));
}

std::uint32_t DesktopWindows::processOf(xcb_window_t window) const {
  std::uint32_t process = 0;
  withProperty(window, processID_, [&](auto values) { process = values.empty() ? 0 : values[0]; });
  return process;
}

std::optional<xcb_window_t> DesktopWindows::windowOf(std::uint32_t process) const {
  std::optional<xcb_window_t> found;
  withProperty(root(), clientList_, [&](auto windows) {
    for (const xcb_window_t window : windows)
      if (processOf(window) == process && isVisible(window)) found = window;
  });
  return found;
}

std::vector<xcb_window_t> DesktopWindows::windowsOf(std::uint32_t process) const {
  std::vector<xcb_window_t> found;
  addWindowsBelow(root(), process, found);
  return found;
}

void DesktopWindows::addWindowsBelow(xcb_window_t window, std::uint32_t process,
                                     std::vector<xcb_window_t>& found) const {
  const XcbReply<xcb_query_tree_reply_t> tree(
      xcb_query_tree_reply(connection(), xcb_query_tree(connection(), window), nullptr));
  if (!tree) return;
  for (const xcb_window_t child : std::span(xcb_query_tree_children(tree.get()), tree->children_len)) {
    if (processOf(child) == process && isVisible(child)) found.push_back(child);
    addWindowsBelow(child, process, found);
  }
}

std::string DesktopWindows::titleOf(xcb_window_t window) const {
  const auto asked = xcb_get_property(connection(), 0, window, atomNamed(connection(), "_NET_WM_NAME"),
                                      XCB_ATOM_ANY, 0, longestProperty);
  const XcbReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection(), asked, nullptr));
  if (!reply || reply->format != 8) return {};
  return {static_cast<const char*>(xcb_get_property_value(reply.get())), reply->value_len};
}

bool DesktopWindows::isUnmanaged(xcb_window_t window) const {
  const XcbReply<xcb_get_window_attributes_reply_t> reply(xcb_get_window_attributes_reply(
      connection(), xcb_get_window_attributes(connection(), window), nullptr));
  return reply && reply->override_redirect;
}

bool DesktopWindows::isVisible(xcb_window_t window) const {
  const XcbReply<xcb_get_window_attributes_reply_t> reply(xcb_get_window_attributes_reply(
      connection(), xcb_get_window_attributes(connection(), window), nullptr));
  return reply && reply->map_state == XCB_MAP_STATE_VIEWABLE;
}

std::optional<QRect> DesktopWindows::placeOf(xcb_window_t window) const {
  const auto sizeAsked = xcb_get_geometry(connection(), window);
  const auto cornerAsked = xcb_translate_coordinates(connection(), window, root(), 0, 0);
  const XcbReply<xcb_get_geometry_reply_t> size(xcb_get_geometry_reply(connection(), sizeAsked, nullptr));
  const XcbReply<xcb_translate_coordinates_reply_t> corner(
      xcb_translate_coordinates_reply(connection(), cornerAsked, nullptr));
  if (!size || !corner) return std::nullopt;
  return QRect(corner->dst_x, corner->dst_y, size->width, size->height);
}

std::optional<QRect> DesktopWindows::frameOf(xcb_window_t window) const {
  for (;;) {
    const XcbReply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(connection(), xcb_query_tree(connection(), window), nullptr));
    if (!tree) return std::nullopt;
    if (tree->parent == root()) return placeOf(window);
    window = tree->parent;
  }
}

void DesktopWindows::setFontResolution(int dotsPerInch) const {
  const std::string resources = "Xft.dpi:\t" + std::to_string(dotsPerInch) + "\n";
  xcb_change_property(connection(), XCB_PROP_MODE_REPLACE, root(), XCB_ATOM_RESOURCE_MANAGER, XCB_ATOM_STRING,
                      8, static_cast<std::uint32_t>(resources.size()), resources.data());
  syncWithServer(connection());
}

// A maximized window keeps its size.
void DesktopWindows::unmaximize(xcb_window_t window) const {
  xcb_client_message_event_t request{};
  request.response_type = XCB_CLIENT_MESSAGE;
  request.format = 32;
  request.window = window;
  request.type = atomNamed(connection(), "_NET_WM_STATE");
  constexpr std::uint32_t remove = 0;
  request.data.data32[0] = remove;
  request.data.data32[1] = atomNamed(connection(), "_NET_WM_STATE_MAXIMIZED_HORZ");
  request.data.data32[2] = atomNamed(connection(), "_NET_WM_STATE_MAXIMIZED_VERT");
  constexpr std::uint32_t listeners =
      XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
  xcb_send_event(connection(), 0, root(), listeners, reinterpret_cast<const char*>(&request));
}

void DesktopWindows::resize(xcb_window_t window, QSize size) const {
  unmaximize(window);
  const std::uint32_t values[] = {static_cast<std::uint32_t>(size.width()),
                                  static_cast<std::uint32_t>(size.height())};
  xcb_configure_window(connection(), window, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, values);
  syncWithServer(connection());
}

QRect DesktopWindows::wholeScreen() const {
  const auto* screen = xcb_setup_roots_iterator(xcb_get_setup(connection())).data;
  return {0, 0, screen->width_in_pixels, screen->height_in_pixels};
}

void DesktopWindows::move(xcb_window_t window, QPoint corner) const {
  const std::uint32_t values[] = {static_cast<std::uint32_t>(corner.x()),
                                  static_cast<std::uint32_t>(corner.y())};
  xcb_configure_window(connection(), window, XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y, values);
  syncWithServer(connection());
}

}  // namespace nimbletype
