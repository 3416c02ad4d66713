#include "platform/mac/keys/mac_event_poster.h"

#include "platform/mac/keys/event_codes.h"

namespace nimbletype {

bool MacEventPoster::mayPost() const {
  return CGPreflightPostEventAccess();
}

bool MacEventPoster::begin() {
  source_ = CFRef<CGEventSourceRef>::adopt(CGEventSourceCreate(kCGEventSourceStatePrivate));
  return static_cast<bool>(source_);
}

void MacEventPoster::press(std::uint16_t keyCode, ModifierSet modifiers) {
  post(keyCode, true, modifiers, {});
  post(keyCode, false, modifiers, {});
}

void MacEventPoster::type(std::u16string_view chunk) {
  post(0, true, {}, chunk);
  post(0, false, {}, chunk);
}

void MacEventPoster::post(std::uint16_t keyCode, bool down, ModifierSet modifiers, std::u16string_view text) {
  if (!source_) return;
  const auto event = CFRef<CGEventRef>::adopt(CGEventCreateKeyboardEvent(source_.get(), keyCode, down));
  if (!event) return;
  CGEventSetFlags(event.get(), flagsOf(modifiers));
  if (!text.empty())
    CGEventKeyboardSetUnicodeString(event.get(), text.size(), reinterpret_cast<const UniChar*>(text.data()));
  CGEventSetIntegerValueField(event.get(), kCGEventSourceUserData, ownEventMarker);
  CGEventPost(kCGHIDEventTap, event.get());
}

}  // namespace nimbletype
