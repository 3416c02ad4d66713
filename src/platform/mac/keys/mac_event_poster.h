#pragma once
#import <CoreGraphics/CoreGraphics.h>

#include "platform/keys/event_poster.h"
#include "platform/mac/bridge/cf_ref.h"

namespace nimbletype {

// Posts marked events at the HID level from a private source, so that what the user holds down stays out of
// them.
class MacEventPoster final : public EventPoster {
 public:
  bool mayPost() const override;
  bool begin() override;
  void end() override { source_ = {}; }
  bool suits(std::u16string_view) const override { return true; }
  void press(std::uint16_t keyCode, ModifierSet modifiers) override;
  void type(std::u16string_view chunk) override;

 private:
  void post(std::uint16_t keyCode, bool down, ModifierSet modifiers, std::u16string_view text);

  CFRef<CGEventSourceRef> source_;
};

}  // namespace nimbletype
