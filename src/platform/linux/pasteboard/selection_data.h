#pragma once
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "platform/linux/x11/xcb_support.h"

namespace nimbletype {

// The names that the exchange of selections between X clients is made of.
struct SelectionAtoms {
  xcb_atom_t clipboard, targets, multiple, timestamp, incremental, atomPair, utf8Text, plainText,
      plainUtf8Text, text, passwordHint, saveTargets, deleteSelection, insertSelection, insertProperty;

  static SelectionAtoms intern(xcb_connection_t* connection);
  // Whether a target is a request to the owner rather than a format of what it offers.
  bool isRequest(xcb_atom_t target) const;
  bool isText(xcb_atom_t target) const;
};

// One format of a selection as it travels: `unit` is the size of its values in bits.
struct SelectionFormat {
  xcb_atom_t target = XCB_ATOM_NONE, type = XCB_ATOM_NONE;
  std::uint8_t unit = 8;
  std::string bytes{};

  std::uint32_t length(std::size_t byteCount) const {
    return static_cast<std::uint32_t>(byteCount / (unit / 8));
  }
};
using SelectionFormats = std::vector<SelectionFormat>;

// A text in the formats applications ask for, with the mark that clipboard histories take for a password's.
SelectionFormats passingText(const SelectionAtoms& atoms, std::string_view text);

// A property of one of our windows, which is deleted with the reading; type NONE when it is not there.
// `complete` is false when it is longer than `room` bytes and has been left as it is.
struct ReadProperty {
  SelectionFormat value;
  bool complete = true;
};
ReadProperty takeProperty(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t property,
                          std::size_t room);
std::vector<xcb_atom_t> atomsIn(const std::string& bytes);

// Has the window told whenever somebody takes the selection; the kind of event that will do so, 0 where the
// server cannot tell.
std::uint8_t followSelection(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t selection);

// An input-only window that nobody sees.
xcb_window_t createHiddenWindow(xcb_connection_t* connection, std::uint32_t events);

}  // namespace nimbletype
