#pragma once
#include <QWidget>
#include <functional>
#include <vector>

#include "windows/menu/menu_entry.h"

namespace nimbletype {

// All rows of one content, one under the other. What can be chosen gets the focus by arrows and pointer.
class MenuRows final : public QWidget {
 public:
  MenuRows(const MenuContent& content, std::function<void(MenuAction)> chosen, QWidget* parent);

  // What all rows take, at least this wide, whether they have been shown yet or not.
  QSize fittingSize(int smallestWidth);
  // The next row that can be chosen, or the one before; round the ends.
  void moveFocus(int step);
  void focusOn(MenuAction action);
  MenuAction focused() const;
  // Chooses the row with this shortcut; false where there is none.
  bool press(const QKeySequence& keys);

 private:
  QWidget* widgetFor(const MenuRow& row);
  QAbstractButton* add(QAbstractButton* button, MenuAction action);

  std::function<void(MenuAction)> chosen_;
  struct Choice {
    QAbstractButton* button;  // a child
    MenuAction action;
  };
  std::vector<Choice> choices_;
};

}  // namespace nimbletype
