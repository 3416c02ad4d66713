#pragma once
#include <QColor>

class QApplication;

namespace nimbletype {

// Distances and roundings in logical pixels.
namespace space {
constexpr int hair = 4, small = 8, medium = 12, large = 16, huge = 24;
}
constexpr int cardRadius = 9, controlRadius = 6;
constexpr int longestMotion = 120;  // milliseconds

// The colours of one appearance. Text and accent have a contrast of 4.5 to 1 or more on window and card.
struct Look {
  bool isDark = false;
  QColor window, card, line, text, faint, accent, onAccent, accentSoft, good, trouble;
};
Look lookFor(bool isDark);

// The sizes of text in logical pixels, in proportion to what the desktop writes in.
struct TextSizes {
  int text, note, title, figure;
};
TextSizes textSizes();

// Dresses every window of the application, those that are open included. Widgets are told apart by the
// property "role": "card", "title", "note", "figure", "chief" (the button that is meant), "danger".
void wear(QApplication& application, const Look& look);
// As worn now.
const Look& currentLook();

}  // namespace nimbletype
