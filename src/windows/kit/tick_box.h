#pragma once
#include <QCheckBox>

namespace nimbletype {

// A check box in the look's colours.
class TickBox final : public QCheckBox {
 public:
  using QCheckBox::QCheckBox;
  QSize sizeHint() const override;

 protected:
  bool hitButton(const QPoint& point) const override { return rect().contains(point); }
  void paintEvent(QPaintEvent*) override;
};

}  // namespace nimbletype
