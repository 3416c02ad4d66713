#include "windows/kit/status_picture.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>

#include "windows/kit/symbols.h"

namespace nimbletype {
namespace {

const QColor plate("#e3ae4a"), pausedPlate("#8d8a84"), troublePlate("#d9483b"), ink("#241a05"),
    paper("#ffffff");

QColor plateOf(const StatusIcon& icon) {
  if (icon.symbol == "pause.circle.fill") return pausedPlate;
  return icon.symbol == "exclamationmark.circle.fill" ? troublePlate : plate;
}

// Three digits are all that a tray has room for: "99", "412", "1k".
QString shortTitle(const QString& title) {
  QString digits;
  for (const QChar c : title)
    if (c.isDigit()) digits += c;
  return digits.size() <= 3 ? digits : digits.chopped(3) + "k";
}

// As large as fits into the box.
void drawFitting(QPainter& painter, const QRectF& box, const QString& text) {
  QFont font;
  font.setBold(true);
  font.setPixelSize(qMax(1, qRound(box.height())));
  const QRectF drawn = QFontMetricsF(font).tightBoundingRect(text);
  const qreal scale = qMin(box.width() / drawn.width(), box.height() / drawn.height());
  QPainterPath path;
  path.addText(0, 0, font, text);
  painter.translate(box.center());
  painter.scale(scale, scale);
  painter.translate(-path.boundingRect().center());
  painter.fillPath(path, painter.pen().color());
  painter.resetTransform();
}

QPixmap pictureOf(const StatusIcon& icon, int size) {
  QPixmap picture(size, size);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  const QColor background = plateOf(icon), front = background == plate ? ink : paper;
  const qreal edge = size / 22.0;
  painter.setPen(Qt::NoPen);
  painter.setBrush(background);
  painter.drawRoundedRect(QRectF(0, 0, size, size), 5 * edge, 5 * edge);
  painter.setPen(front);
  const QString title = shortTitle(QString::fromStdString(icon.title));
  if (!title.isEmpty()) {
    drawFitting(painter, QRectF(0, 0, size, size).adjusted(2 * edge, 4.5 * edge, -2 * edge, -4.5 * edge),
                title);
    return picture;
  }
  const std::string_view shape = background == pausedPlate    ? "pause.fill"
                                 : background == troublePlate ? "exclamationmark"
                                                              : std::string_view(icon.symbol);
  const int inner = qRound(size * 0.82);
  const QPixmap drawn = symbol(shape, inner, front);
  painter.drawPixmap((size - inner) / 2, (size - inner) / 2, drawn);
  return picture;
}

}  // namespace

QIcon statusPicture(const StatusIcon& icon) {
  QIcon result;
  for (const int size : {16, 22, 24, 32, 44, 48, 64}) result.addPixmap(pictureOf(icon, size));
  return result;
}

}  // namespace nimbletype
