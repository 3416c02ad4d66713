#include "platform/linux/keys/relay/raw_input.h"

#include <xcb/xinput.h>

#include <algorithm>
#include <string_view>

#include "platform/linux/x11/xcb_support.h"

namespace nimbletype {

namespace {

// The devices through which the server passes on what programs press.
std::vector<std::uint16_t> findProgramDevices(xcb_connection_t* connection) {
  std::vector<std::uint16_t> found;
  const XcbReply<xcb_input_xi_query_device_reply_t> reply(xcb_input_xi_query_device_reply(
      connection, xcb_input_xi_query_device(connection, XCB_INPUT_DEVICE_ALL), nullptr));
  if (!reply) return found;
  for (auto i = xcb_input_xi_query_device_infos_iterator(reply.get()); i.rem;
       xcb_input_xi_device_info_next(&i)) {
    const std::string_view name(xcb_input_xi_device_info_name(i.data), i.data->name_len);
    if (name.find("XTEST") != std::string_view::npos) found.push_back(i.data->deviceid);
  }
  return found;
}

}  // namespace

RawInput::RawInput(xcb_connection_t* connection, xcb_window_t root) {
  const auto* extension = xcb_get_extension_data(connection, &xcb_input_id);
  if (!extension || !extension->present) return;
  extension_ = extension->major_opcode;
  // From version 2.1 on raw events come whoever has grabbed the device.
  const XcbReply<xcb_input_xi_query_version_reply_t> version(
      xcb_input_xi_query_version_reply(connection, xcb_input_xi_query_version(connection, 2, 2), nullptr));
  if (!version || version->major_version < 2) return;
  programDevices_ = findProgramDevices(connection);

  struct {
    xcb_input_event_mask_t header{XCB_INPUT_DEVICE_ALL_MASTER, 1};
    std::uint32_t mask = XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS;
  } selection;
  xcb_input_xi_select_events(connection, root, 1, &selection.header);
  valid_ = true;
}

std::optional<RawPress> RawInput::read(const xcb_generic_event_t& event) const {
  const auto& generic = reinterpret_cast<const xcb_ge_generic_event_t&>(event);
  if ((event.response_type & 0x7f) != XCB_GE_GENERIC || generic.extension != extension_) return std::nullopt;
  const bool isKey = generic.event_type == XCB_INPUT_RAW_KEY_PRESS;
  if (!isKey && generic.event_type != XCB_INPUT_RAW_BUTTON_PRESS) return std::nullopt;
  // Both events have the same layout.
  const auto& raw = reinterpret_cast<const xcb_input_raw_key_press_event_t&>(event);
  return RawPress{.isKey = isKey,
                  .isSynthetic = isProgram(raw.sourceid),
                  .detail = static_cast<std::uint8_t>(raw.detail),
                  .time = raw.time};
}

bool RawInput::isProgram(std::uint16_t device) const {
  return std::ranges::count(programDevices_, device) > 0;
}

RecentPresses::Fate RecentPresses::find(std::uint8_t keycode, xcb_timestamp_t time) const {
  // The latest first: two presses of a key may bear the same time.
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    const Entry& entry = entries_[(next_ - 1 - i) % entries_.size()];
    if (entry.keycode == keycode && entry.time == time) return entry.fate;
  }
  return Fate::unknown;
}

}  // namespace nimbletype
