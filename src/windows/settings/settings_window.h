#pragma once
#include <QDialog>
#include <vector>

#include "core/app/launch_at_login.h"
#include "core/settings/preferences.h"
#include "input/monitors/permissions.h"

namespace nimbletype {

class RowCard;

// The settings of the application itself: its icon, its start, other applications like it.
class SettingsWindow final : public QDialog {
 public:
  struct Services {
    Preferences& prefs;
    LaunchAtLogin& login;
    Permissions& permissions;
  };
  explicit SettingsWindow(const Services& services);
  void present();

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void bind(RowCard& card, Setting<bool>& setting, const QString& label, const QString& note);
  void addLogin(RowCard& card);
  void addPredictions(RowCard& card);

  Services s_;
  std::vector<Task> observations_;
};

}  // namespace nimbletype
