#pragma once
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/desktop/screen_reader.h"
#include "platform/desktop/workspace.h"

namespace nimbletype {

// What an element of this role is good for when a window is read.
enum class ElementUse {
  skip,       // controls and secrets: neither it nor what it holds is read
  container,  // only what it holds
  title,      // its title is text to read
  value,      // its value is
  textArea,   // the part of its text that is in sight is
};
ElementUse useOf(std::string_view role, std::string_view subrole);

// The lines nearest to a place, at most `limit` characters of them, joined in reading order. Without a place
// the last lines count as nearest.
std::string nearestLines(std::span<const PlacedText> lines, const std::optional<TopLeftRect>& place,
                         std::size_t limit);
// The first lines of a window, at most `limit` characters.
std::string firstLines(std::span<const PlacedText> lines, std::size_t limit);

// Whether the title is that of a browser window that is to leave no traces.
bool isPrivateTitle(std::string_view title);

// The share of a window that none of those in front of it covers, from 0 to 1.
double visibleShare(const TopLeftRect& window, std::span<const TopLeftRect> inFront);

// Windows beside `focused` on its screen that may be read and can be seen well, nearest to the front first;
// `windows` runs from the front to the back.
using WindowTest = std::function<bool(const ScreenWindow&)>;
std::vector<ScreenWindow> windowsBeside(const ScreenWindow& focused, std::span<const ScreenWindow> windows,
                                        std::span<const TopLeftRect> screens, const WindowTest& mayRead,
                                        std::size_t most);

// Whether one of the windows in front of this one covers a part of it and must not be seen.
bool isCoveredBySecret(const ScreenWindow& window, std::span<const ScreenWindow> windows,
                       const WindowTest& mayRead);

// Which of `windows` has this title and lies here; none when no one fits.
const ScreenWindow* windowMatching(std::span<const ScreenWindow> windows, std::int64_t processID,
                                   std::string_view title, const std::optional<TopLeftRect>& frame);

}  // namespace nimbletype
