#include "platform/linux/x11/x11_image.h"

#include "platform/linux/x11/xcb_support.h"

namespace nimbletype {
namespace {

constexpr std::uint32_t allPlanes = ~0u;
constexpr int bytesPerPixel = 4;  // blue first, on every display in use

}  // namespace

QRect x11Bounds(xcb_connection_t* connection, xcb_window_t window) {
  const XcbReply<xcb_get_geometry_reply_t> reply(
      xcb_get_geometry_reply(connection, xcb_get_geometry(connection, window), nullptr));
  return reply ? QRect(0, 0, reply->width, reply->height) : QRect();
}

QImage x11Image(xcb_connection_t* connection, xcb_window_t window, const QRect& part) {
  if (part.isEmpty()) return {};
  const auto asked =
      xcb_get_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, window, static_cast<std::int16_t>(part.x()),
                    static_cast<std::int16_t>(part.y()), static_cast<std::uint16_t>(part.width()),
                    static_cast<std::uint16_t>(part.height()), allPlanes);
  const XcbReply<xcb_get_image_reply_t> reply(xcb_get_image_reply(connection, asked, nullptr));
  const qsizetype stride = qsizetype{bytesPerPixel} * part.width();
  if (!reply || xcb_get_image_data_length(reply.get()) != stride * part.height()) return {};
  const uchar* pixels = xcb_get_image_data(reply.get());
  return QImage(pixels, part.width(), part.height(), stride, QImage::Format_RGB32).copy();
}

}  // namespace nimbletype
