#pragma once
#import <ApplicationServices/ApplicationServices.h>

#include <memory>
#include <optional>

#include "platform/accessibility/accessibility.h"
#include "platform/mac/bridge/cf_ref.h"

namespace nimbletype {

// The notifications of one process, served on the main run loop until `close`. Shared by the task that
// observes the process and the tasks that watch its elements, which may end in any order.
class AXProcessObserver : public std::enable_shared_from_this<AXProcessObserver> {
 public:
  // Null when the process cannot be observed yet.
  static std::shared_ptr<AXProcessObserver> open(pid_t process, Accessibility::Notification notify);

  bool watch(AXUIElementRef element);
  void unwatch(AXUIElementRef element);
  void close();
  bool isClosed() const { return !observer_; }

 private:
  AXProcessObserver() = default;
  static void received(AXObserverRef observer, AXUIElementRef element, CFStringRef name, void* context);
  bool add(AXUIElementRef element, CFStringRef name);

  Accessibility::Notification notify_;
  CFRef<AXObserverRef> observer_;
  std::optional<MainRunLoopSource> source_;
};

}  // namespace nimbletype
