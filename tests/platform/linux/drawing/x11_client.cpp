#include "tests/platform/linux/drawing/x11_client.h"

#include <xcb/shape.h>

#include <iterator>
#include <stdexcept>

#include "platform/linux/x11/x11_image.h"
#include "platform/linux/x11/xcb_support.h"

namespace nimbletype {
namespace {

template <typename Reply>
XcbReply<Reply> owned(Reply* reply) {
  if (!reply) throw std::runtime_error("the X server gave no answer");
  return XcbReply<Reply>(reply);
}

const xcb_screen_t& screenOf(xcb_connection_t* connection) {
  return *xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
}

}  // namespace

X11Client::X11Client(const QRect& place, std::uint32_t color) : connection_(xcb_connect(nullptr, nullptr)) {
  const xcb_screen_t& screen = screenOf(connection_);
  window_ = xcb_generate_id(connection_);
  xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window_, screen.root,
                    static_cast<std::int16_t>(place.x()), static_cast<std::int16_t>(place.y()),
                    static_cast<std::uint16_t>(place.width()), static_cast<std::uint16_t>(place.height()), 0,
                    XCB_WINDOW_CLASS_INPUT_OUTPUT, screen.root_visual, XCB_CW_BACK_PIXEL, &color);
  xcb_map_window(connection_, window_);
  xcb_set_input_focus(connection_, XCB_INPUT_FOCUS_PARENT, window_, XCB_CURRENT_TIME);
  focus();  // waits until the server has done all this
}

X11Client::~X11Client() {
  xcb_disconnect(connection_);
}

xcb_window_t X11Client::focus() const {
  return owned(xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr))->focus;
}

std::uint32_t X11Client::pixelAt(const QPoint& point) const {
  return x11Image(connection_, rootWindow(connection_), {point, QSize(1, 1)}).pixel(0, 0) & 0xFFFFFF;
}

QRegion X11Client::shapeOf(xcb_window_t window, Shape shape) const {
  const auto kind = shape == Shape::input ? XCB_SHAPE_SK_INPUT : XCB_SHAPE_SK_BOUNDING;
  const auto reply = owned(xcb_shape_get_rectangles_reply(
      connection_, xcb_shape_get_rectangles(connection_, window, kind), nullptr));
  QRegion region;
  const auto* rects = xcb_shape_get_rectangles_rectangles(reply.get());
  for (int i = 0; i < xcb_shape_get_rectangles_rectangles_length(reply.get()); ++i)
    region += QRect(rects[i].x, rects[i].y, rects[i].width, rects[i].height);
  return region;
}

bool X11Client::isMapped(xcb_window_t window) const {
  const auto cookie = xcb_get_window_attributes(connection_, window);
  return owned(xcb_get_window_attributes_reply(connection_, cookie, nullptr))->map_state ==
         XCB_MAP_STATE_VIEWABLE;
}

QRect X11Client::placeOf(xcb_window_t window) const {
  const auto place =
      owned(xcb_get_geometry_reply(connection_, xcb_get_geometry(connection_, window), nullptr));
  return {place->x, place->y, place->width, place->height};
}

xcb_window_t X11Client::topmost() const {
  const auto cookie = xcb_query_tree(connection_, rootWindow(connection_));
  const auto tree = owned(xcb_query_tree_reply(connection_, cookie, nullptr));
  return xcb_query_tree_children(tree.get())[tree->children_len - 1];
}

void X11Client::ownSelection(const char* name, bool own) const {
  xcb_set_selection_owner(connection_, own ? window_ : XCB_NONE, atomNamed(connection_, name),
                          XCB_CURRENT_TIME);
  focus();
}

void X11Client::leaveFree(const QRect& area) const {
  const std::int32_t values[] = {area.x(), area.y(), area.width(), area.height()};
  xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, rootWindow(connection_),
                      atomNamed(connection_, "_NET_WORKAREA"), XCB_ATOM_CARDINAL, 32, std::size(values),
                      values);
  focus();
}

bool X11Client::soon(const std::function<bool()>& condition) const {
  for (int roundTrips = 0; roundTrips < 10000; ++roundTrips)
    if (condition()) return true;
  return false;
}

}  // namespace nimbletype
