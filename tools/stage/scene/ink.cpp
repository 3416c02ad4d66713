#include "tools/stage/scene/ink.h"

#include <algorithm>
#include <cstdlib>

namespace nimbletype {
namespace {

// What differs from the upper left corner, which is background.
int inkAt(const QImage& picture, const QRect& part, int x, int y) {
  return std::abs(qGray(picture.pixel(x, y)) - qGray(picture.pixel(part.topLeft())));
}

template <typename Visit>
void eachPixel(const QRect& part, Visit visit) {
  for (int y = part.top(); y <= part.bottom(); ++y)
    for (int x = part.left(); x <= part.right(); ++x) visit(x, y);
}

// The pixels with at least half of the strongest contrast there: grey text has them where black text has.
class Ink {
 public:
  Ink(const QImage& picture, const QRect& part) : picture_(picture), part_(part) {
    eachPixel(part,
              [this](int x, int y) { strongest_ = std::max(strongest_, inkAt(picture_, part_, x, y)); });
  }
  bool isAt(int x, int y) const { return strongest_ > 0 && 2 * inkAt(picture_, part_, x, y) >= strongest_; }

 private:
  const QImage& picture_;
  QRect part_;
  int strongest_ = 0;
};

}  // namespace

double commonInk(const QImage& one, const QImage& other, const QRect& part) {
  const Ink first(one, part), second(other, part);
  double both = 0, either = 0;
  eachPixel(part, [&](int x, int y) {
    both += first.isAt(x, y) && second.isAt(x, y);
    either += first.isAt(x, y) || second.isAt(x, y);
  });
  return either > 0 ? both / either : 0;
}

QRect inkWithin(const QImage& picture, const QRect& part) {
  const Ink ink(picture, part & picture.rect());
  QRect found;
  eachPixel(part & picture.rect(), [&](int x, int y) {
    if (ink.isAt(x, y)) found |= QRect(x, y, 1, 1);
  });
  return found;
}

}  // namespace nimbletype
