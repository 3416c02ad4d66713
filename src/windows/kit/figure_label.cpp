#include "windows/kit/figure_label.h"

#include <QPainter>
#include <algorithm>

namespace nimbletype {

int FigureLabel::widthOf(QChar character) const {
  if (!character.isDigit()) return fontMetrics().horizontalAdvance(character);
  int widest = 0;
  for (char digit = '0'; digit <= '9'; ++digit)
    widest = std::max(widest, fontMetrics().horizontalAdvance(QLatin1Char(digit)));
  return std::max(widest, fontMetrics().horizontalAdvance(character));
}

QSize FigureLabel::sizeHint() const {
  int width = 0;
  for (const QChar character : text()) width += widthOf(character);
  return {width, fontMetrics().height()};
}

// Numbers run from left to right in every script.
void FigureLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setPen(palette().color(QPalette::WindowText));
  int x = 0;
  for (const QChar character : text()) {
    const QRect cell(x, 0, widthOf(character), height());
    painter.drawText(cell, Qt::AlignHCenter | Qt::AlignVCenter, QString(character));
    x += cell.width();
  }
}

}  // namespace nimbletype
