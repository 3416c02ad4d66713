#pragma once
#include <QPixmap>
#include <string>

namespace nimbletype {

// The icon of an application as RunningApp names it; a plain one where there is none.
QPixmap appIcon(const std::string& icon, int size, qreal devicePixelRatio);

}  // namespace nimbletype
