#include "platform/linux/tray/tray_status_bar.h"

#include <QApplication>
#include <QEvent>
#include <QScreen>
#include <utility>

namespace nimbletype {
namespace {

// Qt's window for the item, which it makes for trays that take windows alone.
QWidget* itemWindow() {
  for (QWidget* widget : QApplication::topLevelWidgets())
    if (widget->objectName() == QLatin1String("QSystemTrayIconSys")) return widget;
  return nullptr;
}

double mainScreenPixels() {
  const QScreen* main = QGuiApplication::primaryScreen();
  for (const QScreen* screen : QGuiApplication::screens())
    if (screen->geometry().topLeft().isNull()) main = screen;
  return main ? qRound(main->geometry().height() * main->devicePixelRatio()) : 0;
}

}  // namespace

TrayStatusBar::TrayStatusBar(Draw draw)
    : draw_(std::move(draw)), notifierHost_([this] { update(); }), xembedHost_([this] { update(); }) {}

void TrayStatusBar::show(const StatusIcon& icon) {
  icon_ = icon;
  if (!item_) return update();
  item_->setIcon(draw_(icon));
  item_->setToolTip(QString::fromStdString(icon.toolTip));
}

void TrayStatusBar::remove() {
  icon_.reset();
  takeDown();
  noticePlace();
}

StatusItemPlace TrayStatusBar::place() const {
  if (!item_) return {};
  if (!window_) return {notifierHost_.hasOurs(), std::nullopt};
  const auto frame = window_->internalWinId()
                         ? xembedHost_.frameOf(static_cast<xcb_window_t>(window_->internalWinId()))
                         : std::nullopt;
  return frame ? StatusItemPlace{true, flipped(*frame, mainScreenPixels())} : StatusItemPlace{};
}

// Its window is made anew as trays come and go. The tray may have it by the time that it is followed.
bool TrayStatusBar::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::WinIdChange) {
    followWindow();
    QMetaObject::invokeMethod(
        this, [this] { noticePlace(); }, Qt::QueuedConnection);
  }
  return QObject::eventFilter(watched, event);
}

// Qt asks only once in a process which kind of tray there is, so it is not asked before one of them is.
bool TrayStatusBar::hasHost() const {
  return notifierHost_.isThere() || (notifierHost_.isKnown() && xembedHost_.isThere());
}

void TrayStatusBar::update() {
  // An item that Qt made for the other kind of tray is of no use in this one.
  const bool fits = item_ && (window_ || notifierHost_.isThere());
  if (icon_ && hasHost() && !fits) putUp();
  noticePlace();
}

void TrayStatusBar::putUp() {
  takeDown();
  item_ = std::make_unique<QSystemTrayIcon>();
  connect(item_.get(), &QSystemTrayIcon::activated, this, &TrayStatusBar::activate);
  sinceClick_.invalidate();
  show(*std::as_const(icon_));
  item_->show();
  window_ = itemWindow();
  if (!window_) return;
  window_->installEventFilter(this);
  window_->setAccessibleName(QStringLiteral("Nimbletype"));
  followWindow();
}

void TrayStatusBar::takeDown() {
  if (item_) notifierHost_.forgetOurs();
  item_.reset();
}

void TrayStatusBar::followWindow() {
  if (const auto id = window_ ? window_->internalWinId() : 0)
    xembedHost_.follow(static_cast<xcb_window_t>(id));
}

void TrayStatusBar::noticePlace() {
  if (const auto now = place(); now != told_) {
    told_ = now;
    const auto moved = moved_;  // it may end itself
    if (moved) moved();
  }
}

// Some trays tell a double click as two clicks.
void TrayStatusBar::activate(QSystemTrayIcon::ActivationReason reason) {
  const bool isClick = reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::Context ||
                       reason == QSystemTrayIcon::MiddleClick;
  if (!isClick || (sinceClick_.isValid() && sinceClick_.elapsed() < QApplication::doubleClickInterval()))
    return;
  sinceClick_.start();
  const auto clicked = clicked_;  // it may end itself
  if (clicked) clicked();
}

}  // namespace nimbletype
