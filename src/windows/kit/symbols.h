#pragma once
#include <QColor>
#include <QIcon>
#include <QPixmap>
#include <string_view>

namespace nimbletype {

// A symbol in one colour, `size` logical pixels wide and high. Empty where there is none of that name.
QPixmap symbol(std::string_view name, int size, const QColor& color, qreal devicePixelRatio = 1);

}  // namespace nimbletype
