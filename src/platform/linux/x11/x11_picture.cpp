#include "platform/linux/x11/x11_picture.h"

#include <algorithm>
#include <cstdint>

#include "platform/linux/x11/xcb_support.h"

namespace nimbletype {
namespace {

constexpr int leastSide = 40;  // pixels; nothing smaller holds text worth reading

struct Area {
  int x = 0, y = 0, width = 0, height = 0;
};

// What lies off the screen cannot be had.
Area onScreen(const TopLeftRect& frame, const xcb_screen_t& screen) {
  const int left = std::max(0, static_cast<int>(frame.x)), top = std::max(0, static_cast<int>(frame.y));
  const int right = std::min<int>(screen.width_in_pixels, static_cast<int>(frame.right()));
  const int bottom = std::min<int>(screen.height_in_pixels, static_cast<int>(frame.bottom()));
  return {left, top, right - left, bottom - top};
}

// Four bytes a pixel, blue first, on every display in use.
std::string greyTwiceAsLarge(const std::uint8_t* pixels, const Area& area) {
  const auto width = static_cast<std::size_t>(area.width), height = static_cast<std::size_t>(area.height);
  std::string pgm = "P5\n" + std::to_string(2 * width) + " " + std::to_string(2 * height) + "\n255\n";
  pgm.reserve(pgm.size() + 4 * width * height);
  for (std::size_t y = 0; y < height; ++y) {
    std::string row;
    for (std::size_t x = 0; x < width; ++x) {
      const std::uint8_t* p = pixels + 4 * (y * width + x);
      row.append(2, static_cast<char>((p[0] * 29 + p[1] * 150 + p[2] * 77) >> 8));
    }
    pgm += row;
    pgm += row;
  }
  return pgm;
}

}  // namespace

std::optional<X11Picture> x11PictureOf(const TopLeftRect& frame) {
  const XcbConnection connection = connectToDisplay("");
  if (!connection) return std::nullopt;
  const xcb_screen_t& screen = *xcb_setup_roots_iterator(xcb_get_setup(connection.get())).data;
  const Area area = onScreen(frame, screen);
  if (area.width < leastSide || area.height < leastSide) return std::nullopt;
  const auto asked =
      xcb_get_image(connection.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, screen.root,
                    static_cast<std::int16_t>(area.x), static_cast<std::int16_t>(area.y),
                    static_cast<std::uint16_t>(area.width), static_cast<std::uint16_t>(area.height), ~0u);
  const XcbReply<xcb_get_image_reply_t> image(xcb_get_image_reply(connection.get(), asked, nullptr));
  const auto bytes = static_cast<std::size_t>(area.width) * static_cast<std::size_t>(area.height) * 4;
  if (!image || static_cast<std::size_t>(xcb_get_image_data_length(image.get())) != bytes)
    return std::nullopt;
  return X11Picture{greyTwiceAsLarge(xcb_get_image_data(image.get()), area), static_cast<double>(area.x),
                    static_cast<double>(area.y)};
}

}  // namespace nimbletype
