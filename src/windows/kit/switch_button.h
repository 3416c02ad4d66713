#pragma once
#include <QAbstractButton>

namespace nimbletype {

// A switch that is on or off.
class SwitchButton final : public QAbstractButton {
 public:
  explicit SwitchButton(QWidget* parent = nullptr);
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent*) override;
};

}  // namespace nimbletype
