#pragma once
#include <utility>

#include "platform/desktop/status_bar.h"

namespace nimbletype {

class RecordingStatusBar : public StatusBar {
 public:
  void show(const StatusIcon& shown) override { icon = shown; }
  void remove() override { icon.reset(); }
  StatusItemPlace place() const override { return icon ? host : StatusItemPlace{}; }
  void setHighlighted(bool on) override { highlighted = on; }
  void onClick(std::function<void()> clicked) override { clicked_ = std::move(clicked); }
  void onPlaceChange(std::function<void()> changed) override { moved_ = std::move(changed); }

  void click() {
    if (icon && clicked_) clicked_();
  }
  void moveTo(const StatusItemPlace& place) {
    host = place;
    if (moved_) moved_();
  }

  std::optional<StatusIcon> icon;  // none while there is no item
  StatusItemPlace host{true, BottomLeftRect{1200, 876, 24, 24}};
  bool highlighted = false;

 private:
  std::function<void()> clicked_, moved_;
};

}  // namespace nimbletype
