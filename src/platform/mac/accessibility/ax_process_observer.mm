#include "platform/mac/accessibility/ax_process_observer.h"

#include "platform/mac/accessibility/ax_object.h"
#include "platform/mac/bridge/mac_text.h"

namespace nimbletype {

std::shared_ptr<AXProcessObserver> AXProcessObserver::open(pid_t process,
                                                           Accessibility::Notification notify) {
  const std::shared_ptr<AXProcessObserver> self(new AXProcessObserver);
  self->observer_ =
      copiedBy<AXObserverRef>([&](AXObserverRef* out) { AXObserverCreate(process, received, out); });
  const auto application = CFRef<AXUIElementRef>::adopt(AXUIElementCreateApplication(process));
  if (!self->observer_ || !application) return nullptr;
  AXUIElementSetMessagingTimeout(application.get(), Accessibility::messagingTimeout);
  if (!self->add(application.get(), kAXFocusedUIElementChangedNotification)) return nullptr;
  // Some applications have no windows to speak of; their focus is still worth following.
  self->add(application.get(), kAXFocusedWindowChangedNotification);
  self->notify_ = std::move(notify);
  self->source_.emplace(CFRef<CFRunLoopSourceRef>::retain(AXObserverGetRunLoopSource(self->observer_.get())));
  return self;
}

bool AXProcessObserver::add(AXUIElementRef element, CFStringRef name) {
  const AXError error = AXObserverAddNotification(observer_.get(), element, name, this);
  return error == kAXErrorSuccess || error == kAXErrorNotificationAlreadyRegistered;
}

bool AXProcessObserver::watch(AXUIElementRef element) {
  const bool value = add(element, kAXValueChangedNotification);
  const bool selection = add(element, kAXSelectedTextChangedNotification);
  return value || selection;
}

void AXProcessObserver::unwatch(AXUIElementRef element) {
  if (isClosed()) return;
  AXObserverRemoveNotification(observer_.get(), element, kAXValueChangedNotification);
  AXObserverRemoveNotification(observer_.get(), element, kAXSelectedTextChangedNotification);
}

void AXProcessObserver::close() {
  source_.reset();
  observer_ = {};
  notify_ = nullptr;
}

// The listener may end its own task from inside the call.
void AXProcessObserver::received(AXObserverRef, AXUIElementRef element, CFStringRef name, void* context) {
  const auto self = static_cast<AXProcessObserver*>(context)->shared_from_this();
  const Accessibility::Notification notify = self->notify_;
  if (notify) notify(utf8String((__bridge NSString*)name), wrapped(element));
}

}  // namespace nimbletype
