#pragma once
#include <QImage>

namespace nimbletype {

// How much of the ink within `part` stands in the same pixels of both pictures, from 0 to 1: 1 where text of
// the same font, size and place is in both, whatever its colour. 0 where there is no ink.
double commonInk(const QImage& one, const QImage& other, const QRect& part);

// The smallest rectangle around the ink within `part`.
QRect inkWithin(const QImage& picture, const QRect& part);

}  // namespace nimbletype
