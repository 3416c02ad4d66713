#pragma once
#include <QAbstractButton>

#include "menubar/menu_content.h"

namespace nimbletype {

// One row of the menu that can be chosen.
class MenuEntry final : public QAbstractButton {
 public:
  explicit MenuEntry(MenuRow row, QWidget* parent = nullptr);
  QKeySequence shortcutKeys() const;
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent*) override;
  void enterEvent(QEnterEvent*) override;

 private:
  std::string_view leadingSymbol() const;
  void paintSymbol(QPainter& painter, std::string_view name, const QRect& place, const QColor& color) const;

  MenuRow row_;
};

}  // namespace nimbletype
