#pragma once
#import <AppKit/AppKit.h>

#include <vector>

#include "platform/desktop/status_bar.h"
#include "platform/system/task.h"

@class NimbletypeStatusItemTarget;

namespace nimbletype {

// An item of the system's menu bar, which keeps its place there from one start to the next. Needs NSApp.
class MacStatusBar final : public StatusBar {
 public:
  MacStatusBar();
  ~MacStatusBar() override;
  MacStatusBar(const MacStatusBar&) = delete;
  MacStatusBar& operator=(const MacStatusBar&) = delete;

  void show(const StatusIcon& icon) override;
  void remove() override;
  StatusItemPlace place() const override;
  void setHighlighted(bool highlighted) override;
  void onClick(std::function<void()> clicked) override;
  void onPlaceChange(std::function<void()> changed) override;

 private:
  void install();

  NimbletypeStatusItemTarget* target_;
  NSStatusItem* item_ = nil;
  std::vector<Task> registrations_;
};

}  // namespace nimbletype
