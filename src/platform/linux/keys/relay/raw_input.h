#pragma once
#include <xcb/xcb.h>

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

namespace nimbletype {

// A press of a key or mouse button anywhere on the desktop, whoever receives it.
struct RawPress {
  bool isKey = false;
  bool isSynthetic = false;  // from a program, not from a device
  std::uint8_t detail = 0;   // X key code or button
  xcb_timestamp_t time = 0;
};

// Reads the presses of all devices without taking part in their delivery.
class RawInput {
 public:
  RawInput(xcb_connection_t* connection, xcb_window_t root);
  bool isValid() const { return valid_; }
  std::optional<RawPress> read(const xcb_generic_event_t& event) const;

 private:
  bool isProgram(std::uint16_t device) const;

  std::vector<std::uint16_t> programDevices_;
  std::uint8_t extension_ = 0;
  bool valid_ = false;
};

// What was done about the latest raw presses, to recognise each when a grab delivers it once more.
class RecentPresses {
 public:
  enum class Fate : std::uint8_t { unknown, own, reported, awaited };
  struct Entry {
    std::uint8_t keycode = 0;
    xcb_timestamp_t time = 0;
    Fate fate = Fate::unknown;
  };

  void add(const Entry& entry) { entries_[next_++ % entries_.size()] = entry; }
  Fate find(std::uint8_t keycode, xcb_timestamp_t time) const;

 private:
  std::array<Entry, 64> entries_;
  std::size_t next_ = 0;
};

}  // namespace nimbletype
