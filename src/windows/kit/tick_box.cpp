#include "windows/kit/tick_box.h"

#include <QPainter>
#include <QStyle>

#include "windows/kit/look.h"
#include "windows/kit/symbols.h"

namespace nimbletype {
namespace {

constexpr int boxSize = 17, ring = 2, tickSize = 13;
constexpr qreal boxRadius = 4;

}  // namespace

QSize TickBox::sizeHint() const {
  return {boxSize + 2 * ring + space::small + fontMetrics().horizontalAdvance(text()),
          std::max(boxSize + 2 * ring, fontMetrics().height())};
}

void TickBox::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const Look& look = currentLook();
  const auto mirrored = [this](const QRect& r) { return QStyle::visualRect(layoutDirection(), rect(), r); };
  const QRect box = mirrored({ring, (height() - boxSize) / 2, boxSize, boxSize});
  if (hasFocus()) {
    painter.setPen(QPen(look.accent, 2));
    painter.drawRoundedRect(QRectF(box).adjusted(-1, -1, 1, 1), boxRadius + 1, boxRadius + 1);
  }
  painter.setPen(isChecked() ? look.accent : look.faint);
  painter.setBrush(isChecked() ? look.accent : look.card);
  painter.drawRoundedRect(QRectF(box).adjusted(0.5, 0.5, -0.5, -0.5), boxRadius, boxRadius);
  if (isChecked()) {
    const QRect tick =
        QStyle::alignedRect(layoutDirection(), Qt::AlignCenter, QSize(tickSize, tickSize), box);
    painter.drawPixmap(tick.topLeft(), symbol("checkmark", tickSize, look.onAccent, devicePixelRatioF()));
  }
  painter.setPen(look.text);
  const int left = boxSize + 2 * ring + space::small;
  painter.drawText(
      mirrored({left, 0, width() - left, height()}),
      static_cast<int>(QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft)) | Qt::AlignVCenter, text());
}

}  // namespace nimbletype
