#include "core/prompt/text_window.h"

#include <algorithm>
#include <optional>

#include "text/text.h"

namespace nimbletype {
namespace {

constexpr std::size_t headBytes = 48;
constexpr std::size_t boundarySearchBytes = 120;

// The occurrence of `head` whose distance to the end is closest to `length`: the text may repeat itself.
std::optional<std::size_t> findAnchor(std::string_view s, std::string_view head, std::size_t length) {
  std::optional<std::size_t> best;
  std::size_t bestGap = 0;
  for (std::size_t at = s.find(head); at != std::string_view::npos; at = s.find(head, at + 1)) {
    const std::size_t distance = s.size() - at;
    const std::size_t gap = distance > length ? distance - length : length - distance;
    if (!best || gap < bestGap) best = at, bestGap = gap;
  }
  return best;
}

}  // namespace

std::size_t windowStart(std::string_view s, std::size_t count) {
  const std::size_t start = s.size() - text::lastCharacters(s, count).size();
  if (start == 0) return 0;
  const std::string_view near = s.substr(start, boundarySearchBytes);
  for (const char boundary : {'\n', ' '})
    if (const std::size_t at = near.find(boundary); at != std::string_view::npos && at + 1 < near.size())
      return start + at + 1;
  return start;
}

// Counting takes longer than everything else here, and no character has less than a byte: what was counted
// once is not counted again before it can have become too long.
bool TextWindow::fits(std::string_view window) {
  const std::size_t grown = window.size() - std::min(window.size(), countedBytes_);
  if (counted_ + grown <= longest) return true;
  countedBytes_ = window.size();
  counted_ = text::characterCount(window);
  return counted_ <= longest;
}

// A text that only grows is never counted for this.
bool TextWindow::hasShrunk(std::string_view window) const {
  return !fromStart_ && window.size() < length_ &&
         text::characterCount(text::firstCharacters(window, shortest)) < shortest;
}

std::string_view TextWindow::of(std::string_view before, std::string_view fieldKey) {
  if (fieldKey != fieldKey_) {
    fieldKey_ = fieldKey;
    fromStart_ = true;
    countedBytes_ = counted_ = 0;
  }
  std::size_t start = 0;
  if (!fromStart_) {
    const auto anchor = findAnchor(before, head_, length_);
    fromStart_ = !anchor;
    start = anchor.value_or(0);
  }
  if (hasShrunk(before.substr(start)) || !fits(before.substr(start))) {
    start = windowStart(before, afterStep);
    fromStart_ = start == 0;
    countedBytes_ = before.size() - start;
    counted_ = afterStep;
  }
  if (!fromStart_) {
    head_ = before.substr(start, headBytes);
    length_ = before.size() - start;
  }
  return before.substr(start);
}

}  // namespace nimbletype
