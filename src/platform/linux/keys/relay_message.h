#pragma once
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <span>
#include <string_view>
#include <type_traits>

#include "platform/keys/keys.h"

namespace nimbletype {

// How long the relay lets a key wait for the application's answer. The application must not use it once four
// fifths of that have passed: the rest covers the way back, so that no key is both used and passed on.
inline constexpr std::chrono::milliseconds relayDeadline{50};
constexpr std::chrono::milliseconds answerLimit(std::chrono::milliseconds deadline) {
  return deadline * 4 / 5;
}

// One message between the application and the key relay, which is a process of its own. Both come from the
// same build, so that the bytes of the record are the format.
struct RelayMessage {
  enum class Kind : std::uint8_t {
    ready,      // relay: the tap works; `window` takes the marks of our own events
    key,        // relay: a key was pressed that cannot be taken
    question,   // relay: may the application pass this key on? It waits.
    pointer,    // relay: a mouse button was pressed, or something scrolled
    takeable,   // application: the keys something is shown for
    shortcuts,  // application: the global shortcuts
    answer      // application: whether the key of question `id` is swallowed
  };
  static constexpr std::size_t mostCombos = 64;

  Kind kind = Kind::ready;
  bool isRepeat = false, swallow = false;
  std::uint8_t textSize = 0, comboCount = 0;
  std::array<char, 24> text{};  // 8 UTF-16 units
  std::uint32_t id = 0, window = 0;
  std::int64_t answerBy = 0;                  // monotonic nanoseconds, the same clock in both processes
  std::array<KeyCombo, mostCombos> combos{};  // one for a key

  std::span<const KeyCombo> comboList() const {
    return {combos.data(), std::min<std::size_t>(comboCount, mostCombos)};
  }
  std::string_view characters() const { return {text.data(), std::min<std::size_t>(textSize, text.size())}; }

  static RelayMessage list(Kind kind, std::span<const KeyCombo> wanted) {
    RelayMessage message;
    message.kind = kind;
    message.comboCount = static_cast<std::uint8_t>(std::min(wanted.size(), mostCombos));
    std::copy_n(wanted.begin(), message.comboCount, message.combos.begin());
    return message;
  }
};
static_assert(std::is_trivially_copyable_v<RelayMessage>);

}  // namespace nimbletype
