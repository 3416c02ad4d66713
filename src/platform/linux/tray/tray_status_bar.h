#pragma once
#include <QElapsedTimer>
#include <QIcon>
#include <QObject>
#include <QPointer>
#include <QSystemTrayIcon>
#include <QWidget>
#include <memory>

#include "platform/desktop/status_bar.h"
#include "platform/linux/tray/notifier_host.h"
#include "platform/linux/tray/xembed_host.h"

namespace nimbletype {

// The item in a tray: over the session bus, or as a window in a tray that knows no better. Comes up as soon
// as there is such a tray; where it is, in pixels of the display, only the second kind tells. Needs a running
// QApplication on an X11 display whose loop is GLib's.
class TrayStatusBar final : public QObject, public StatusBar {
 public:
  // The title is for the picture to hold.
  using Draw = std::function<QIcon(const StatusIcon&)>;
  explicit TrayStatusBar(Draw draw);

  void show(const StatusIcon& icon) override;
  void remove() override;
  StatusItemPlace place() const override;
  void setHighlighted(bool) override {}  // the tray does that as it likes
  void onClick(std::function<void()> clicked) override { clicked_ = std::move(clicked); }
  void onPlaceChange(std::function<void()> changed) override { moved_ = std::move(changed); }

 private:
  bool eventFilter(QObject* watched, QEvent* event) override;
  bool hasHost() const;
  void update();
  void putUp();
  void takeDown();
  void followWindow();
  void noticePlace();
  void activate(QSystemTrayIcon::ActivationReason reason);

  Draw draw_;
  std::optional<StatusIcon> icon_;
  NotifierHost notifierHost_;
  XembedHost xembedHost_;
  std::unique_ptr<QSystemTrayIcon> item_;
  QPointer<QWidget> window_;  // the item's own, in a tray that takes windows
  StatusItemPlace told_;
  QElapsedTimer sinceClick_;
  std::function<void()> clicked_, moved_;
};

}  // namespace nimbletype
