#pragma once

namespace nimbletype {

// A rectangle in points of the Accessibility space: origin at the top left of the main screen (the one whose
// origin is zero), y growing downwards. `x`, `y` name its top left corner.
struct TopLeftRect {
  double x = 0, y = 0, width = 0, height = 0;
  double right() const { return x + width; }
  double bottom() const { return y + height; }
  bool operator==(const TopLeftRect&) const = default;
};

// A rectangle in points of the overlay space: origin at the bottom left of the main screen, y growing
// upwards. `x`, `y` name its bottom left corner.
struct BottomLeftRect {
  double x = 0, y = 0, width = 0, height = 0;
  double right() const { return x + width; }
  double top() const { return y + height; }
  bool operator==(const BottomLeftRect&) const = default;
};

// The flip is done on the height of the main screen, whatever screen the rectangle lies on.
constexpr BottomLeftRect flipped(const TopLeftRect& r, double mainScreenHeight) {
  return {r.x, mainScreenHeight - r.y - r.height, r.width, r.height};
}
constexpr TopLeftRect flipped(const BottomLeftRect& r, double mainScreenHeight) {
  return {r.x, mainScreenHeight - r.y - r.height, r.width, r.height};
}

}  // namespace nimbletype
