#pragma once
#include <QPixmap>
#include <string>

namespace nimbletype {

// The icon of an application as RunningApp names it; empty where there is none.
QPixmap appIcon(const std::string& icon, int size, qreal devicePixelRatio);

}  // namespace nimbletype
