#pragma once
#import <CoreGraphics/CoreGraphics.h>

#include <optional>
#include <vector>

#include "platform/keys/dead_keys.h"
#include "platform/keys/event_tap.h"
#include "platform/mac/bridge/cf_ref.h"
#include "platform/system/main_loop.h"
#include "platform/system/system_log.h"

namespace nimbletype {

// The port over one active session tap that is served by the main run loop. The system may switch a tap off
// and say so, switch it off silently, or end it; so it is looked at now and then as well.
class MacEventTap final : public EventTap {
 public:
  MacEventTap(MainLoop& loop, SystemLog& log) : loop_(loop), log_(log) {}
  ~MacEventTap() override { stop(); }
  MacEventTap(const MacEventTap&) = delete;
  MacEventTap& operator=(const MacEventTap&) = delete;

  bool start(Handler handler) override;
  void stop() override;
  bool isRunning() const override { return port_.has_value(); }
  void setTakeable(std::span<const KeyCombo> shown) override { takeable_.assign(shown.begin(), shown.end()); }
  void setShortcuts(std::span<const KeyCombo> shortcuts) override {
    shortcuts_.assign(shortcuts.begin(), shortcuts.end());
  }

 private:
  // The tap's port with its run-loop source; the tap is off and gone when this is destroyed.
  class Port {
   public:
    explicit Port(CFRef<CFMachPortRef> port);
    ~Port();
    Port(const Port&) = delete;
    Port& operator=(const Port&) = delete;
    void enable(bool on) { CGEventTapEnable(port_.get(), on); }
    bool isEnabled() const { return CFMachPortIsValid(port_.get()) && CGEventTapIsEnabled(port_.get()); }

   private:
    CFRef<CFMachPortRef> port_;
    MainRunLoopSource source_;
  };

  static CGEventRef received(CGEventTapProxy proxy, CGEventType type, CGEventRef event, void* self);
  static CFRef<CFMachPortRef> createTap(void* self);
  bool swallows(CGEventType type, CGEventRef event);
  bool swallowsKey(CGEventRef event);
  bool mayTake(const KeyCombo& combo) const;
  void reenable(CGEventType reason);
  void lookAfter();
  void revive();

  MainLoop& loop_;
  SystemLog& log_;
  Handler handler_;
  std::vector<KeyCombo> takeable_, shortcuts_;
  DeadKeys deadKeys_;
  std::optional<Port> port_;
  Task lookAfter_;
};

}  // namespace nimbletype
