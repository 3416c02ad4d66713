#pragma once
#include <QLabel>

namespace nimbletype {

// A number whose digits are all equally wide, so that it does not jump as it counts.
class FigureLabel final : public QLabel {
 public:
  using QLabel::QLabel;
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent*) override;

 private:
  int widthOf(QChar character) const;
};

}  // namespace nimbletype
