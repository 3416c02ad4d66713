#pragma once
#include <cstdint>
#include <string_view>

namespace nimbletype {

// The few AT-SPI states that matter here, as bits of the state set's first word.
struct AtspiStates {
  std::uint64_t bits = 0;
  bool has(unsigned state) const { return (bits >> state & 1) != 0; }
};
namespace atspi_state {
inline constexpr unsigned active = 1, editable = 7, focused = 12, multiLine = 17, showing = 25,
                          singleLine = 26, visible = 30;
}

namespace atspi_role {
inline constexpr std::uint32_t passwordText = 40, rootPane = 46;
}

// What an AT-SPI role is called towards the core.
std::string_view accessibilityRole(std::uint32_t role, AtspiStates states);

// A pane that only holds others: some applications claim the focus for one right after the text inside it.
bool isPlainContainer(std::uint32_t role);

}  // namespace nimbletype
