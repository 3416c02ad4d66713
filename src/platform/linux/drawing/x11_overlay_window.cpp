#include "platform/linux/drawing/x11_overlay_window.h"

#include <unistd.h>
#include <xcb/shape.h>

#include <algorithm>
#include <array>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace nimbletype {
namespace {

constexpr std::uint8_t depthWithAlpha = 32;
constexpr std::uint32_t redMask = 0xFF0000;  // as in the pictures that are shown

std::optional<xcb_visualid_t> visualWithAlpha(const xcb_screen_t& screen) {
  for (auto depth = xcb_screen_allowed_depths_iterator(&screen); depth.rem; xcb_depth_next(&depth)) {
    if (depth.data->depth != depthWithAlpha) continue;
    for (auto visual = xcb_depth_visuals_iterator(depth.data); visual.rem; xcb_visualtype_next(&visual))
      if (visual.data->_class == XCB_VISUAL_CLASS_TRUE_COLOR && visual.data->red_mask == redMask)
        return visual.data->visual_id;
  }
  return std::nullopt;
}

struct Property {
  xcb_connection_t* connection;
  xcb_window_t window;

  void numbers(std::string_view name, xcb_atom_t type, std::span<const std::uint32_t> values) const {
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, atomNamed(connection, name), type, 32,
                        static_cast<std::uint32_t>(values.size()), values.data());
  }
  void text(xcb_atom_t name, xcb_atom_t type, std::string_view value) const {
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, name, type, 8,
                        static_cast<std::uint32_t>(value.size()), value.data());
  }
};

std::vector<xcb_rectangle_t> rectanglesOf(const QRegion& region) {
  std::vector<xcb_rectangle_t> rectangles;
  for (const QRect& r : region)
    rectangles.push_back({static_cast<std::int16_t>(r.x()), static_cast<std::int16_t>(r.y()),
                          static_cast<std::uint16_t>(r.width()), static_cast<std::uint16_t>(r.height())});
  return rectangles;
}

}  // namespace

X11OverlayWindow::X11OverlayWindow() : connection_(connectToDisplay("")) {
  if (!connection_) return;
  create(*xcb_setup_roots_iterator(xcb_get_setup(connection())).data);
  describe();
  // The compositor of screen 0 owns this selection for as long as it lives.
  compositor_ = atomNamed(connection(), "_NET_WM_CM_S0");
}

void X11OverlayWindow::create(const xcb_screen_t& screen) {
  const auto alpha = visualWithAlpha(screen);
  const xcb_visualid_t visual = alpha.value_or(screen.root_visual);
  depth_ = alpha ? depthWithAlpha : screen.root_depth;
  const xcb_colormap_t colors = xcb_generate_id(connection());
  xcb_create_colormap(connection(), XCB_COLORMAP_ALLOC_NONE, colors, screen.root, visual);
  window_ = xcb_generate_id(connection());
  const std::uint32_t attributes[] = {XCB_BACK_PIXMAP_NONE, 0, 1, colors};
  xcb_create_window(
      connection(), depth_, window_, screen.root, 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, visual,
      XCB_CW_BACK_PIXMAP | XCB_CW_BORDER_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_COLORMAP, attributes);
  xcb_shape_rectangles(connection(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, XCB_CLIP_ORDERING_UNSORTED,
                       window_, 0, 0, 0, nullptr);
  pen_ = xcb_generate_id(connection());
  const std::uint32_t nothing = 0;
  xcb_create_gc(connection(), pen_, window_, XCB_GC_FOREGROUND, &nothing);
}

void X11OverlayWindow::describe() const {
  const Property property{connection(), window_};
  using namespace std::string_view_literals;
  property.text(XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, "nimbletype\0nimbletype\0"sv);
  property.text(atomNamed(connection(), "_NET_WM_NAME"), atomNamed(connection(), "UTF8_STRING"),
                "nimbletype");
  property.numbers("_NET_WM_PID", XCB_ATOM_CARDINAL, std::array{static_cast<std::uint32_t>(getpid())});
  // What is dragged about gets no shadow, no fixed opacity and no fading for being a tooltip.
  property.numbers("_NET_WM_WINDOW_TYPE", XCB_ATOM_ATOM,
                   std::array{atomNamed(connection(), "_NET_WM_WINDOW_TYPE_DND")});
  // Windows that draw their own frame are commonly exempt from shadow and blur.
  property.numbers("_GTK_FRAME_EXTENTS", XCB_ATOM_CARDINAL, std::array<std::uint32_t, 4>{});
  property.numbers("_COMPTON_SHADOW", XCB_ATOM_CARDINAL, std::array<std::uint32_t, 1>{});
}

bool X11OverlayWindow::isTransparent() const {
  if (depth_ != depthWithAlpha) return false;
  const XcbReply<xcb_get_selection_owner_reply_t> owner(xcb_get_selection_owner_reply(
      connection(), xcb_get_selection_owner(connection(), compositor_), nullptr));
  // What every client is told, such as a change of the keyboard, came along.
  while (XcbEvent(xcb_poll_for_queued_event(connection()))) continue;
  return owner && owner->owner != XCB_NONE;
}

void X11OverlayWindow::show(const QImage& picture, const QPoint& corner, const QRegion& part) {
  if (!connection_) return;
  setPicture(picture);
  cut(part);
  place({corner, picture.size()});
  xcb_map_window(connection(), window_);
  xcb_clear_area(connection(), 0, window_, 0, 0, 0, 0);
  xcb_flush(connection());
  isShown_ = true;
}

// Emptied first: a compositor that fades windows out would leave the text in view.
void X11OverlayWindow::hide() {
  if (!isShown_) return;
  constexpr xcb_rectangle_t all{0, 0, 0xFFFF, 0xFFFF};
  if (isWhole_) xcb_poly_fill_rectangle(connection(), window_, pen_, 1, &all);
  xcb_unmap_window(connection(), window_);
  xcb_flush(connection());
  isShown_ = false;
}

// As the window's background: what was covered, and what is new, shows it at once.
void X11OverlayWindow::setPicture(const QImage& picture) const {
  const xcb_pixmap_t pixmap = xcb_generate_id(connection());
  xcb_create_pixmap(connection(), depth_, pixmap, window_, static_cast<std::uint16_t>(picture.width()),
                    static_cast<std::uint16_t>(picture.height()));
  send(picture, pixmap);
  xcb_change_window_attributes(connection(), window_, XCB_CW_BACK_PIXMAP, &pixmap);
  xcb_free_pixmap(connection(), pixmap);
}

// As many rows at a time as the server takes in one request.
void X11OverlayWindow::send(const QImage& picture, xcb_pixmap_t target) const {
  constexpr std::size_t unit = 4;
  const auto stride = static_cast<std::size_t>(picture.bytesPerLine());
  const std::size_t most =
      xcb_get_maximum_request_length(connection()) * unit - sizeof(xcb_put_image_request_t) - unit;
  const int rows = static_cast<int>(std::max<std::size_t>(1, most / stride));
  for (int y = 0; y < picture.height(); y += rows) {
    const int height = std::min(rows, picture.height() - y);
    xcb_put_image(
        connection(), XCB_IMAGE_FORMAT_Z_PIXMAP, target, pen_, static_cast<std::uint16_t>(picture.width()),
        static_cast<std::uint16_t>(height), 0, static_cast<std::int16_t>(y), 0, depth_,
        static_cast<std::uint32_t>(stride * static_cast<std::size_t>(height)), picture.constScanLine(y));
  }
}

void X11OverlayWindow::cut(const QRegion& part) {
  isWhole_ = part.isEmpty();
  if (isWhole_) {
    xcb_shape_mask(connection(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING, window_, 0, 0, XCB_PIXMAP_NONE);
    return;
  }
  const auto rectangles = rectanglesOf(part);
  xcb_shape_rectangles(connection(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING, XCB_CLIP_ORDERING_UNSORTED,
                       window_, 0, 0, static_cast<std::uint32_t>(rectangles.size()), rectangles.data());
}

// Put above the others only as it appears: a menu that was opened over it since stays there.
void X11OverlayWindow::place(const QRect& place) const {
  std::uint16_t what =
      XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT;
  if (!isShown_) what |= XCB_CONFIG_WINDOW_STACK_MODE;
  const std::uint32_t values[] = {static_cast<std::uint32_t>(place.x()),
                                  static_cast<std::uint32_t>(place.y()),
                                  static_cast<std::uint32_t>(place.width()),
                                  static_cast<std::uint32_t>(place.height()), XCB_STACK_MODE_ABOVE};
  xcb_configure_window(connection(), window_, what, values);
}

}  // namespace nimbletype
