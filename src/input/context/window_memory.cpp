#include "input/context/window_memory.h"

#include <algorithm>

namespace nimbletype {

void WindowMemory::forgetOld(MonotonicTime now) {
  std::erase_if(windows_, [&](const Window& w) { return now - w.leftAt >= longest; });
  if (windows_.size() > most) windows_.resize(most);
}

void WindowMemory::left(std::string key, std::vector<PlacedText> lines, MonotonicTime now) {
  std::erase_if(windows_, [&](const Window& w) { return w.key == key; });
  if (!lines.empty()) windows_.insert(windows_.begin(), {std::move(key), std::move(lines), now});
  forgetOld(now);
}

std::optional<std::vector<PlacedText>> WindowMemory::returnedTo(const std::string& key, MonotonicTime now) {
  forgetOld(now);
  const auto found = std::ranges::find(windows_, key, &Window::key);
  if (found == windows_.end()) return std::nullopt;
  auto lines = std::move(found->lines);
  windows_.erase(found);
  return lines;
}

std::vector<PlacedText> WindowMemory::lines(std::span<const PlacedText> seenNow, MonotonicTime now) {
  forgetOld(now);
  std::vector<PlacedText> lines;
  const auto isThere = [](std::span<const PlacedText> among, const PlacedText& line) {
    return std::ranges::find(among, line.text, &PlacedText::text) != among.end();
  };
  for (const Window& window : windows_)
    for (const PlacedText& line : window.lines)
      if (!isThere(seenNow, line) && !isThere(lines, line)) lines.push_back(line);
  return lines;
}

}  // namespace nimbletype
