#pragma once
#include <QFrame>
#include <functional>

class QLabel;
class QVBoxLayout;

namespace nimbletype {

class SwitchButton;

// A card of rows: a label with a note under it, and a control at the end.
class RowCard final : public QFrame {
 public:
  explicit RowCard(QWidget* parent = nullptr);

  SwitchButton* addSwitch(const QString& label, const QString& note, std::function<void(bool)> toggled);
  // A row with a control of any kind, which the card owns from now on; its label.
  QLabel* addRow(const QString& label, const QString& note, QWidget* control);

 private:
  QVBoxLayout* layout_;
};

}  // namespace nimbletype
