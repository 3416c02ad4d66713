#include "platform/linux/pasteboard/selection_data.h"

#include <xcb/xfixes.h>

#include <algorithm>
#include <array>
#include <cstring>

namespace nimbletype {

SelectionAtoms SelectionAtoms::intern(xcb_connection_t* connection) {
  constexpr std::array<std::string_view, 15> names{"CLIPBOARD",
                                                   "TARGETS",
                                                   "MULTIPLE",
                                                   "TIMESTAMP",
                                                   "INCR",
                                                   "ATOM_PAIR",
                                                   "UTF8_STRING",
                                                   "text/plain",
                                                   "text/plain;charset=utf-8",
                                                   "TEXT",
                                                   "x-kde-passwordManagerHint",
                                                   "SAVE_TARGETS",
                                                   "DELETE",
                                                   "INSERT_SELECTION",
                                                   "INSERT_PROPERTY"};
  std::array<xcb_atom_t, names.size()> a{};
  std::ranges::transform(names, a.begin(),
                         [&](std::string_view name) { return atomNamed(connection, name); });
  return {a[0], a[1], a[2], a[3], a[4], a[5], a[6], a[7], a[8], a[9], a[10], a[11], a[12], a[13], a[14]};
}

bool SelectionAtoms::isRequest(xcb_atom_t target) const {
  const std::array requests{targets,     multiple,        timestamp,       incremental,
                            saveTargets, deleteSelection, insertSelection, insertProperty};
  return std::ranges::find(requests, target) != requests.end();
}

bool SelectionAtoms::isText(xcb_atom_t target) const {
  const std::array<xcb_atom_t, 5> texts{utf8Text, plainUtf8Text, plainText, text, XCB_ATOM_STRING};
  return std::ranges::find(texts, target) != texts.end();
}

SelectionFormats passingText(const SelectionAtoms& atoms, std::string_view text) {
  const std::string bytes(text);
  SelectionFormats formats{{atoms.utf8Text, atoms.utf8Text, 8, bytes},
                           {atoms.plainUtf8Text, atoms.plainUtf8Text, 8, bytes},
                           {atoms.plainText, atoms.plainText, 8, bytes},
                           {atoms.text, atoms.utf8Text, 8, bytes},
                           {atoms.passwordHint, atoms.passwordHint, 8, "secret"}};
  // This one means Latin-1.
  if (std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; }))
    formats.push_back({XCB_ATOM_STRING, XCB_ATOM_STRING, 8, bytes});
  return formats;
}

ReadProperty takeProperty(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t property,
                          std::size_t room) {
  const auto longest = static_cast<std::uint32_t>(room / 4 + 1);
  const XcbReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
      connection, xcb_get_property(connection, 1, window, property, XCB_ATOM_ANY, 0, longest), nullptr));
  if (!reply || reply->type == XCB_ATOM_NONE) return {};
  const auto size = static_cast<std::size_t>(xcb_get_property_value_length(reply.get()));
  if (reply->bytes_after > 0 || size > room) return {{}, false};
  return {{property, reply->type, reply->format == 0 ? std::uint8_t{8} : reply->format,
           std::string(static_cast<const char*>(xcb_get_property_value(reply.get())), size)},
          true};
}

std::vector<xcb_atom_t> atomsIn(const std::string& bytes) {
  std::vector<xcb_atom_t> atoms(bytes.size() / sizeof(xcb_atom_t));
  std::memcpy(atoms.data(), bytes.data(), atoms.size() * sizeof(xcb_atom_t));
  return atoms;
}

std::uint8_t followSelection(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t selection) {
  const auto* fixes = xcb_get_extension_data(connection, &xcb_xfixes_id);
  if (!fixes || !fixes->present) return 0;
  xcb_discard_reply(connection, xcb_xfixes_query_version(connection, 5, 0).sequence);
  xcb_xfixes_select_selection_input(connection, window, selection,
                                    XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER);
  xcb_flush(connection);
  return fixes->first_event;
}

xcb_window_t createHiddenWindow(xcb_connection_t* connection, std::uint32_t events) {
  const xcb_window_t window = xcb_generate_id(connection);
  const std::uint32_t values[] = {1, events};
  xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, rootWindow(connection), -10, -10, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT,
                    XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values);
  return window;
}

}  // namespace nimbletype
