#include "platform/linux/x11/x11_font_resolution.h"

#include <QByteArrayView>
#include <algorithm>
#include <cstdint>

#include "platform/linux/x11/xcb_support.h"

namespace nimbletype {
namespace {

constexpr double usual = 96;
constexpr std::string_view name = "Xft.dpi:";
constexpr std::uint32_t longest = 1 << 16;  // in units of four bytes

}  // namespace

double fontDotsPerInchIn(std::string_view resources) {
  while (!resources.empty()) {
    const std::string_view line = resources.substr(0, resources.find('\n'));
    resources.remove_prefix(std::min(line.size() + 1, resources.size()));
    if (!line.starts_with(name)) continue;
    const double told = QByteArrayView(line.substr(name.size())).trimmed().toDouble();
    if (told > 0) return told;
  }
  return usual;
}

double x11FontDotsPerInch() {
  const XcbConnection connection = connectToDisplay("");
  if (!connection) return usual;
  const auto asked = xcb_get_property(connection.get(), 0, rootWindow(connection.get()),
                                      XCB_ATOM_RESOURCE_MANAGER, XCB_ATOM_STRING, 0, longest);
  const XcbReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection.get(), asked, nullptr));
  if (!reply) return usual;
  return fontDotsPerInchIn({static_cast<const char*>(xcb_get_property_value(reply.get())),
                            static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))});
}

}  // namespace nimbletype
