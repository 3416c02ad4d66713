#pragma once
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/keys/event_tap.h"
#include "platform/linux/keys/relay_process.h"
#include "platform/system/main_loop.h"

namespace nimbletype {

// The tap on an X11 desktop. The grabs are held by a small process of their own (the key relay), so that
// neither a busy nor a stopped application can hold back a key for longer than the relay's deadline; when the
// relay dies or is stopped, another takes its place. Keys that can be taken reach the handler only through a
// grab; all others are told to it afterwards.
class XcbEventTap : public EventTap {
 public:
  // An empty display means that of the environment. The relay passes a key on after `deadline`.
  explicit XcbEventTap(MainLoop& loop, std::string display = {}, std::string relay = installedKeyRelay(),
                       std::chrono::milliseconds deadline = relayDeadline);
  ~XcbEventTap() override;

  bool start(Handler handler) override;
  void stop() override;
  bool isRunning() const override { return running_; }
  void setTakeable(std::span<const KeyCombo> shown) override;
  void setShortcuts(std::span<const KeyCombo> shortcuts) override;

  // The window that takes the marks of our own events; 0 while there is none.
  std::uint32_t markWindow() const { return markWindow_; }
  // The relay's process; 0 while there is none.
  std::int64_t relayProcessID() const { return relay_ ? relay_->processID() : 0; }

 private:
  bool launch();
  void listen();
  void sendCombos() const;
  void onMessage(const RelayMessage& message);
  void onQuestion(const RelayMessage& message);
  void onRelayEnded();
  bool canBeTaken(const KeyCombo& combo) const;

  MainLoop& loop_;
  std::string display_, program_;
  std::chrono::milliseconds deadline_;
  Handler handler_;
  std::vector<KeyCombo> takeable_, shortcuts_;
  std::unique_ptr<RelayProcess> relay_;
  std::uint32_t markWindow_ = 0;
  bool running_ = false;
  unsigned launches_ = 0;
  MonotonicTime launchedAt_;
  Task relaunch_;
  std::shared_ptr<XcbEventTap*> self_;  // empty once destroyed, for messages still on their way
};

}  // namespace nimbletype
