#include "platform/qt/qt_screens.h"

#include <QGuiApplication>
#include <QPalette>
#include <QScreen>

#include "platform/qt/screen_background.h"

namespace nimbletype {
namespace {

const QScreen* mainScreen() {
  for (const QScreen* screen : QGuiApplication::screens())
    if (screen->geometry().topLeft().isNull()) return screen;
  return QGuiApplication::primaryScreen();
}

BottomLeftRect flippedRect(const QRect& rect, double mainHeight) {
  return flipped(TopLeftRect(rect.x(), rect.y(), rect.width(), rect.height()), mainHeight);
}

bool isDarkColor(const QColor& color) {
  return color.lightnessF() < 0.5F;
}

// A middling background counts as dark: the light grey of a ghost stands out from it more than the dark one.
bool isDarkBackground(const QColor& color) {
  return qGray(color.rgb()) < 180;
}

}  // namespace

std::vector<Screen> QtScreens::all() const {
  std::vector<Screen> screens;
  const double height = mainHeight();
  for (const QScreen* screen : QGuiApplication::screens())
    screens.push_back(
        {flippedRect(screen->geometry(), height), flippedRect(screen->availableGeometry(), height)});
  return screens;
}

double QtScreens::mainHeight() const {
  const QScreen* screen = mainScreen();
  return screen ? screen->geometry().height() : 0;
}

bool QtScreens::isDark() const {
  return isDarkColor(QGuiApplication::palette().color(QPalette::Window));
}

bool QtScreens::isDarkAt(const BottomLeftRect& caret) const {
  const TopLeftRect place = flipped(caret, mainHeight());
  const QRect beside(qRound(place.x) + 1, qRound(place.y), 0, qRound(place.height));
  const auto background = backgroundBeside(beside);
  return background ? isDarkBackground(*background) : isDark();
}

}  // namespace nimbletype
