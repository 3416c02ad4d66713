#include "platform/qt/desktop/qt_screens.h"

#include <QGuiApplication>
#include <QPalette>
#include <QScreen>

#include "platform/qt/desktop/screen_background.h"

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

constexpr int widestCaret = 2;

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

bool QtScreens::isDarkAt(const BottomLeftRect& rect) const {
  const TopLeftRect place = flipped(rect, mainHeight());
  const QRect pixels(qRound(place.x), qRound(place.y), qRound(place.width), qRound(place.height));
  const bool isCaret = pixels.width() <= widestCaret;
  const auto background = isCaret ? backgroundBeside(pixels) : backgroundOf(pixels);
  return background ? isDarkBackground(*background) : isDark();
}

}  // namespace nimbletype
