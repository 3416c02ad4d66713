#include "windows/kit/switch_button.h"

#include <QPainter>
#include <QStyle>

#include "windows/kit/look.h"

namespace nimbletype {
namespace {

constexpr int capsuleWidth = 38, capsuleHeight = 22, ring = 3;

}  // namespace

SwitchButton::SwitchButton(QWidget* parent) : QAbstractButton(parent) {
  setCheckable(true);
  setFocusPolicy(Qt::StrongFocus);
}

QSize SwitchButton::sizeHint() const {
  return {capsuleWidth + 2 * ring, capsuleHeight + 2 * ring};
}

void SwitchButton::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const Look& look = currentLook();
  const QRectF capsule =
      QStyle::alignedRect(layoutDirection(), Qt::AlignCenter, {capsuleWidth, capsuleHeight}, rect());
  const qreal radius = capsule.height() / 2;
  if (hasFocus()) {
    painter.setPen(QPen(look.accent, 2));
    painter.drawRoundedRect(capsule.adjusted(-2, -2, 2, 2), radius + 2, radius + 2);
  }
  painter.setPen(isChecked() ? look.accent : look.faint);
  painter.setBrush(isChecked() ? look.accent : look.window);
  painter.drawRoundedRect(capsule.adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
  const bool isRight = isChecked() != (layoutDirection() == Qt::RightToLeft);
  const QPointF centre(isRight ? capsule.right() - radius : capsule.left() + radius, capsule.center().y());
  painter.setPen(Qt::NoPen);
  painter.setBrush(isChecked() ? look.onAccent : look.faint);
  painter.drawEllipse(centre, radius - 4, radius - 4);
}

}  // namespace nimbletype
