#pragma once
#include <QWidget>
#include <functional>
#include <vector>

#include "windows/menu/menu_entry.h"

class QLabel;
class QProgressBar;

namespace nimbletype {

// All rows of one content, one under the other. What can be chosen gets the focus by arrows and pointer.
class MenuRows final : public QWidget {
 public:
  MenuRows(const MenuContent& content, std::function<void(MenuAction)> chosen, QWidget* parent);

  // Follows a content that differs by nothing but how far something has come; false where there is more.
  bool advance(const MenuContent& content);
  // A row is held down, and will be chosen when it is let go.
  bool isPressed() const;

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
  QWidget* progressWidget(const MenuRow& row);
  QAbstractButton* add(QAbstractButton* button, MenuAction action);

  MenuContent content_;
  std::function<void(MenuAction)> chosen_;
  QLabel* progressText_ = nullptr;  // of the one row that has them; children
  QProgressBar* progressBar_ = nullptr;
  struct Choice {
    QAbstractButton* button;  // a child
    MenuAction action;
  };
  std::vector<Choice> choices_;
};

}  // namespace nimbletype
