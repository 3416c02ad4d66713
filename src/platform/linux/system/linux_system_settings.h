#pragma once
#include "platform/linux/bus/dbus_request.h"
#include "platform/linux/system/desktop_choices.h"
#include "platform/system/system_settings.h"

namespace nimbletype {

// The desktop's look as its portal tells it, or, where there is no portal, as GNOME's settings have it. Asked
// in the background: until it has answered, the desktop says nothing. No Linux desktop predicts words itself.
// Needs a GLib main loop on the default context.
class LinuxSystemSettings final : public SystemSettings {
 public:
  LinuxSystemSettings();
  ~LinuxSystemSettings() override;
  LinuxSystemSettings(const LinuxSystemSettings&) = delete;
  LinuxSystemSettings& operator=(const LinuxSystemSettings&) = delete;

  std::optional<bool> predictionsOn() const override { return std::nullopt; }
  bool switchPredictionsOff() override { return false; }
  bool reducesMotion() const override { return choices_.reducesMotion(); }
  std::optional<bool> prefersDark() const override { return choices_.prefersDark(); }
  void onChange(std::function<void()> changed) override { changed_ = std::move(changed); }

 private:
  void follow(GDBusConnection* portal);
  void followSettings();
  void ask(GDBusConnection* portal);
  void become(const DesktopChoices& choices);

  DesktopChoices choices_;
  std::function<void()> changed_;
  GObjectPtr<GSettings> settings_;  // while there is no portal
  Task signals_, question_;
  DBusNameWatch watch_;
};

}  // namespace nimbletype
