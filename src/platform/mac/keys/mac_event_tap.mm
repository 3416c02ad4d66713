#include "platform/mac/keys/mac_event_tap.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <string>

#include "platform/mac/keys/event_codes.h"
#include "text/text.h"

namespace nimbletype {
namespace {

constexpr CGEventMask tappedEvents = CGEventMaskBit(kCGEventLeftMouseDown) |
                                     CGEventMaskBit(kCGEventRightMouseDown) |
                                     CGEventMaskBit(kCGEventOtherMouseDown) |
                                     CGEventMaskBit(kCGEventScrollWheel) | CGEventMaskBit(kCGEventKeyDown);

constexpr Milliseconds lookInterval{5'000};

// The source's process tells as well, should the marker have been lost on the way.
bool isOwn(CGEventRef event) {
  return CGEventGetIntegerValueField(event, kCGEventSourceUserData) == ownEventMarker ||
         CGEventGetIntegerValueField(event, kCGEventSourceUnixProcessID) == getpid();
}

bool isPointer(CGEventType type) {
  return type == kCGEventLeftMouseDown || type == kCGEventRightMouseDown || type == kCGEventOtherMouseDown ||
         type == kCGEventScrollWheel;
}

std::string charactersOf(CGEventRef event) {
  std::array<UniChar, 8> units{};
  UniCharCount count = 0;
  CGEventKeyboardGetUnicodeString(event, units.size(), &count, units.data());
  std::u16string text(units.begin(), units.begin() + std::min<std::size_t>(count, units.size()));
  return text::toUtf8(text);
}

}  // namespace

MacEventTap::Port::Port(CFRef<CFMachPortRef> port)
    : port_(std::move(port)),
      source_(CFRef<CFRunLoopSourceRef>::adopt(CFMachPortCreateRunLoopSource(nullptr, port_.get(), 0))) {
  enable(true);
}

MacEventTap::Port::~Port() {
  enable(false);
  CFMachPortInvalidate(port_.get());
}

bool MacEventTap::start(Handler handler) {
  if (isRunning()) return true;
  auto port = createTap(this);
  if (!port) return false;
  handler_ = std::move(handler);
  port_.emplace(std::move(port));
  deadKeys_.reset();
  lookAfter();
  return true;
}

CFRef<CFMachPortRef> MacEventTap::createTap(void* self) {
  return CFRef<CFMachPortRef>::adopt(CGEventTapCreate(
      kCGSessionEventTap, kCGHeadInsertEventTap, kCGEventTapOptionDefault, tappedEvents, received, self));
}

// The handler stays: it may be the one that is stopping the tap.
void MacEventTap::stop() {
  lookAfter_.cancel();
  port_.reset();
}

CGEventRef MacEventTap::received(CGEventTapProxy, CGEventType type, CGEventRef event, void* self) {
  return static_cast<MacEventTap*>(self)->swallows(type, event) ? nullptr : event;
}

bool MacEventTap::swallows(CGEventType type, CGEventRef event) {
  if (type == kCGEventTapDisabledByTimeout || type == kCGEventTapDisabledByUserInput) {
    reenable(type);
    return false;
  }
  if (isOwn(event)) return false;
  if (isPointer(type)) return handler_(PointerPress{});
  return type == kCGEventKeyDown && swallowsKey(event);
}

bool MacEventTap::swallowsKey(CGEventRef event) {
  const std::int64_t keyCode = CGEventGetIntegerValueField(event, kCGKeyboardEventKeycode);
  if (keyCode < 0 || keyCode > 0xFFFF) return false;
  KeyPress press;
  press.keyCode = static_cast<std::uint16_t>(keyCode);
  press.modifiers = modifiersOf(CGEventGetFlags(event));
  press.characters = charactersOf(event);
  press.isRepeat = CGEventGetIntegerValueField(event, kCGKeyboardEventAutorepeat) != 0;
  const KeyCombo combo = press.combo();
  const bool composed = deadKeys_.pressed(press), takeable = mayTake(combo);
  // The application is to have this key: a handler that would take it must not see it.
  if (composed && takeable) return false;
  if (!handler_(std::move(press)) || !takeable) return false;
  deadKeys_.reset();
  return true;
}

bool MacEventTap::mayTake(const KeyCombo& combo) const {
  const auto holds = [&](const std::vector<KeyCombo>& combos) {
    return std::ranges::count(combos, combo) > 0;
  };
  return holds(takeable_) || holds(shortcuts_);
}

void MacEventTap::reenable(CGEventType reason) {
  const char* text = reason == kCGEventTapDisabledByTimeout ? "timeout" : "user input";
  log_.log("input", std::string("tap disabled (") + text + "), re-enabling");
  if (port_) port_->enable(true);
}

void MacEventTap::lookAfter() {
  lookAfter_ = loop_.after(lookInterval, [this] {
    lookAfter();
    if (port_ && !port_->isEnabled()) revive();
  });
}

// A tap that cannot be switched on again has ended; without the permission for another one there is none, and
// `isRunning` says so.
void MacEventTap::revive() {
  log_.log("input", "tap found off, re-enabling");
  port_->enable(true);
  if (port_->isEnabled()) return;
  port_.reset();
  if (auto port = createTap(this))
    port_.emplace(std::move(port));
  else
    stop();
}

}  // namespace nimbletype
