#include "tools/nimbletype-demo/ink.h"

#include <cstdlib>

namespace nimbletype {
namespace {

// Of 255: grey text on white, but not the lightest of its edges.
constexpr int faintestInk = 50;

// What differs from the upper left corner, which is background.
bool isInk(const QImage& picture, const QRect& part, int x, int y) {
  return std::abs(qGray(picture.pixel(x, y)) - qGray(picture.pixel(part.topLeft()))) >= faintestInk;
}

template <typename Visit>
void eachPixel(const QRect& part, Visit visit) {
  for (int y = part.top(); y <= part.bottom(); ++y)
    for (int x = part.left(); x <= part.right(); ++x) visit(x, y);
}

}  // namespace

double commonInk(const QImage& one, const QImage& other, const QRect& part) {
  if (!one.rect().contains(part) || !other.rect().contains(part)) return 0;
  double both = 0, either = 0;
  eachPixel(part, [&](int x, int y) {
    const bool first = isInk(one, part, x, y), second = isInk(other, part, x, y);
    both += first && second;
    either += first || second;
  });
  return either > 0 ? both / either : 0;
}

QRect inkWithin(const QImage& picture, const QRect& part) {
  QRect found;
  eachPixel(part & picture.rect(), [&](int x, int y) {
    if (isInk(picture, part, x, y)) found |= QRect(x, y, 1, 1);
  });
  return found;
}

}  // namespace nimbletype
