#include "windows/menu/menu_entry.h"

#include <QKeySequence>
#include <QPainter>
#include <QStyle>

#include "windows/kit/look.h"
#include "windows/kit/symbols.h"

namespace nimbletype {
namespace {

constexpr int symbolSize = 15, indentation = 12;

QString toQString(const std::string& text) {
  return QString::fromStdString(text);
}

}  // namespace

MenuEntry::MenuEntry(MenuRow row, QWidget* parent) : QAbstractButton(parent), row_(std::move(row)) {
  setText(toQString(row_.text));
  setAccessibleName(text());
  QString description = toQString(row_.note);
  if (row_.isUnfolded) description = *row_.isUnfolded ? "Choices shown" : "Choices hidden";
  setAccessibleDescription(description);
  setEnabled(row_.isEnabled);
  setFocusPolicy(Qt::StrongFocus);
  setCheckable(row_.isChecked.has_value());
  setChecked(row_.isChecked.value_or(false));
  setAttribute(Qt::WA_Hover);
}

QKeySequence MenuEntry::shortcutKeys() const {
  return QKeySequence::fromString(toQString(row_.shortcut), QKeySequence::PortableText);
}

QSize MenuEntry::sizeHint() const {
  const int line = fontMetrics().height();
  const int trailing = fontMetrics().horizontalAdvance(shortcutKeys().toString(QKeySequence::NativeText)) +
                       (row_.isUnfolded ? symbolSize : 0);
  const int width = 2 * space::large + symbolSize + space::small + row_.indent * indentation +
                    fontMetrics().horizontalAdvance(text()) + (trailing > 0 ? space::large + trailing : 0);
  return {width, line + 2 * space::small - 2 + (row_.note.empty() ? 0 : textSizes().note + space::hair)};
}

std::string_view MenuEntry::leadingSymbol() const {
  if (row_.isChecked) return *row_.isChecked ? "checkmark" : "";
  return row_.symbol;
}

void MenuEntry::paintSymbol(QPainter& painter, std::string_view name, const QRect& place,
                            const QColor& color) const {
  const QPixmap picture = symbol(name, symbolSize, color, devicePixelRatioF());
  if (picture.isNull()) return;
  const QRect square =
      QStyle::alignedRect(layoutDirection(), Qt::AlignCenter, {symbolSize, symbolSize}, place);
  painter.drawPixmap(square.topLeft(), picture);
}

void MenuEntry::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const Look& look = currentLook();
  const QColor ink = isEnabled() ? look.text : look.faint;
  const bool isLit = hasFocus() && isEnabled();
  if (isLit || isDown()) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(look.accentSoft);
    painter.drawRoundedRect(rect().adjusted(space::hair, 0, -space::hair, 0), controlRadius, controlRadius);
  }
  const auto mirrored = [this](const QRect& r) { return QStyle::visualRect(layoutDirection(), rect(), r); };
  const int left = space::large + row_.indent * indentation, right = width() - space::large;
  const int line = fontMetrics().height(), top = row_.note.empty() ? (height() - line) / 2 : space::small - 1;
  const QRect symbolPlace(left, top, symbolSize, line);
  paintSymbol(painter, leadingSymbol(), mirrored(symbolPlace), isLit ? look.accent : ink);
  const int textLeft = left + symbolSize + space::small;
  const int flags = static_cast<int>(QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft)) |
                    Qt::AlignVCenter | Qt::TextSingleLine;
  painter.setPen(ink);
  const QRect textPlace(textLeft, top, right - textLeft, line);
  painter.drawText(mirrored(textPlace), flags,
                   fontMetrics().elidedText(text(), Qt::ElideMiddle, textPlace.width()));
  painter.setPen(look.faint);
  const int trailing =
      static_cast<int>(QStyle::visualAlignment(layoutDirection(), Qt::AlignRight)) | Qt::AlignVCenter;
  painter.drawText(mirrored(textPlace), trailing, shortcutKeys().toString(QKeySequence::NativeText));
  if (row_.isUnfolded)
    paintSymbol(painter, *row_.isUnfolded ? "chevron.down" : "chevron.forward",
                mirrored({right - symbolSize, top, symbolSize, line}), look.faint);
  if (row_.note.empty()) return;
  QFont small = font();
  small.setPixelSize(textSizes().note);
  painter.setFont(small);
  painter.drawText(mirrored({textLeft, top + line, right - textLeft, textSizes().note + space::hair}), flags,
                   toQString(row_.note));
}

void MenuEntry::enterEvent(QEnterEvent* event) {
  if (isEnabled()) setFocus(Qt::MouseFocusReason);
  QAbstractButton::enterEvent(event);
}

}  // namespace nimbletype
