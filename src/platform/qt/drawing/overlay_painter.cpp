#include "platform/qt/drawing/overlay_painter.h"

#include <QPainter>
#include <QPainterPath>
#include <cmath>

namespace nimbletype {
namespace {

QColor toQColor(const Color& c) {
  return QColor::fromRgbF(static_cast<float>(c.red), static_cast<float>(c.green), static_cast<float>(c.blue),
                          static_cast<float>(c.alpha));
}

// A rectangle of the list in the frame's top-left space.
QRectF placed(const BottomLeftRect& rect, double frameHeight) {
  return {rect.x, frameHeight - rect.top(), rect.width, rect.height};
}

// Glyphs stand on whole pixels, as they do in the applications.
QPointF origin(const TextDraw& text, double frameHeight) {
  return {std::round(text.x), std::round(frameHeight - text.baseline)};
}

void fill(QPainter& painter, const QColor& color) {
  painter.setCompositionMode(QPainter::CompositionMode_Source);
  painter.fillRect(painter.viewport(), color);
  painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
}

struct ItemPainter {
  QPainter& painter;
  double frameHeight;
  QtTypesetter& typesetter;

  void operator()(const BoxDraw& box) const {
    painter.setPen(Qt::NoPen);
    painter.setBrush(toQColor(box.fill));
    QRectF rect = placed(box.rect, frameHeight);
    const bool hasEdge = box.stroke.alpha > 0;
    if (hasEdge) rect = rect.toRect();  // between pixels a line would be two faint ones
    painter.drawRoundedRect(rect, box.radius, box.radius);
    if (!hasEdge) return;
    constexpr double half = 0.5;
    painter.setPen(QPen(toQColor(box.stroke), 2 * half));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(rect.adjusted(half, half, -half, -half), box.radius - half, box.radius - half);
  }

  void operator()(const TextDraw& text) const {
    painter.setPen(toQColor(text.color));
    for (const QGlyphRun& run : typesetter.set(text.font, text.text, text.rightToLeft).runs)
      painter.drawGlyphRun(origin(text, frameHeight), run);
  }
};

struct ItemCover {
  double frameHeight;
  QtTypesetter& typesetter;

  QRect operator()(const BoxDraw& box) const { return placed(box.rect, frameHeight).toAlignedRect(); }

  QRect operator()(const TextDraw& text) const {
    const LineMetrics line = typesetter.line(text.font);
    const QPointF start = origin(text, frameHeight);
    return QRectF(start.x() + (text.rightToLeft ? -1 : 1), start.y() - std::ceil(line.ascender),
                  std::ceil(typesetter.width(text.font, text.text)),
                  std::ceil(line.ascender) + std::ceil(-line.descender))
        .toAlignedRect();
  }
};

}  // namespace

void paintOverlay(QPaintDevice& device, const DrawList& list, const std::optional<QColor>& background,
                  QtTypesetter& typesetter) {
  QPainter painter(&device);
  fill(painter, background.value_or(Qt::transparent));
  painter.setRenderHint(QPainter::Antialiasing);
  const ItemPainter item{painter, list.frame.height, typesetter};
  for (const auto& each : list.items) std::visit(item, each);
}

void paintNothing(QPaintDevice& device) {
  QPainter painter(&device);
  fill(painter, Qt::transparent);
}

QRegion coveredRegion(const DrawList& list, QtTypesetter& typesetter) {
  QRegion region;
  for (const auto& item : list.items) region += std::visit(ItemCover{list.frame.height, typesetter}, item);
  return region & QRect(0, 0, static_cast<int>(list.frame.width), static_cast<int>(list.frame.height));
}

QRegion roundedPlate(const DrawList& list) {
  const auto* plate = list.items.empty() ? nullptr : std::get_if<BoxDraw>(&list.items.front());
  if (!plate || plate->radius <= 0) return {};
  const QRectF place = placed(plate->rect, list.frame.height);
  if (place.size().toSize() != QSizeF(list.frame.width, list.frame.height).toSize()) return {};
  QPainterPath outline;
  outline.addRoundedRect(place, plate->radius, plate->radius);
  return outline.toFillPolygon().toPolygon();
}

}  // namespace nimbletype
