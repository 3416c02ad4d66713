#include "overlay/ghost/ghost_style.h"

namespace nimbletype {
namespace {

constexpr Color grey(double white, double alpha) {
  return {white, white, white, alpha};
}

// The label colour (black or white) drawn three fifths of the way to gold.
constexpr Color gold(bool dark) {
  const Color tint{0.85, 0.62, 0.12, 0};
  const double label = dark ? 1 : 0, share = dark ? 0.6 : 0.75;
  auto mix = [&](double channel) { return label + (channel - label) * share; };
  return {mix(tint.red), mix(tint.green), mix(tint.blue), dark ? 0.92 : 0.88};
}

Color faded(Color color, double alpha) {
  color.alpha = alpha;
  return color;
}

}  // namespace

GhostColors ghostColors(bool tinted, bool dark) {
  Color text = dark ? grey(0.88, 0.96) : grey(0.55, 0.92);
  if (tinted) text = gold(dark);
  return {.text = text,
          .box = grey(0.5, dark ? 0.22 : 0.12),
          .keycap = faded(text, 0.1),
          .keycapEdge = faded(text, 0.45),
          .keycapLabel = tinted || dark ? text : grey(0.42, 1)};  // small letters need more contrast
}

}  // namespace nimbletype
