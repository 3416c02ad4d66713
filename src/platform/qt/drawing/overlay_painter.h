#pragma once
#include <QColor>
#include <QImage>
#include <QRegion>
#include <optional>

#include "platform/drawing/overlay_surface.h"
#include "platform/qt/drawing/qt_typesetter.h"

namespace nimbletype {

// Paints a draw list on a picture of the frame's size. With a background there is no transparency: everything
// is painted on that colour.
void paintOverlay(QPaintDevice& device, const DrawList& list, const std::optional<QColor>& background,
                  QtTypesetter& typesetter);

void paintNothing(QPaintDevice& device);

// The part of the frame that shows something: the boxes and the lines of text, each but for the first pixel
// in its direction, where the application's caret stands.
QRegion coveredRegion(const DrawList& list, QtTypesetter& typesetter);

// The outline of the rounded box that everything else stands on; empty where there is none.
QRegion roundedPlate(const DrawList& list);

}  // namespace nimbletype
