#pragma once
#include <QImage>
#include <QString>
#include <vector>

namespace nimbletype {

struct Photo {
  QString caption;
  QImage picture;
};

// All pictures on one sheet of this width, pixel for pixel, each under its caption. Needs a QGuiApplication.
QImage contactSheet(const std::vector<Photo>& photos, int sheetWidth = 1980);

}  // namespace nimbletype
