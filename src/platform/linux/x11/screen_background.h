#pragma once
#include <xcb/xcb.h>

#include <QColor>
#include <QImage>
#include <QRect>
#include <optional>

namespace nimbletype {

// The colour that most pixels of an image have; none for an empty image. Text covers less than what is behind
// it.
std::optional<QColor> commonestColor(const QImage& image);

// The background of what is on screen at a place, in pixels of the root window; none where the screen cannot
// be read.
std::optional<QColor> backgroundOf(xcb_connection_t* connection, const QRect& place);

// The same just right of a caret.
std::optional<QColor> backgroundBeside(xcb_connection_t* connection, const QRect& caret);

}  // namespace nimbletype
