#pragma once
#include <QIcon>

#include "platform/desktop/status_bar.h"

namespace nimbletype {

// The item for trays, which show a picture alone: the symbol on a plate that stands out from light and dark
// panels, and the title in place of the symbol where
// there is one.
QIcon statusPicture(const StatusIcon& icon);

}  // namespace nimbletype
