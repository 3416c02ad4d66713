#pragma once
#include <QWidget>
#include <vector>

#include "core/settings/preferences.h"
#include "input/source/practice_field_source.h"
#include "input/source/source_switch.h"

class QLabel;

namespace nimbletype {

class PracticeText;

// A place to try suggestions without an application to write in.
class PlaygroundWindow final : public QWidget {
 public:
  // All outlive the window.
  PlaygroundWindow(SourceSwitch& source, Preferences& prefs, const std::string& bundleIdentifier);
  ~PlaygroundWindow() override;
  void present();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void moveEvent(QMoveEvent* event) override;

 private:
  void nameKeys();

  SourceSwitch& switch_;
  Preferences& prefs_;
  PracticeText* text_;  // a child, as is the label
  QLabel* keys_;
  PracticeFieldSource field_;
  std::vector<Task> observations_;
};

}  // namespace nimbletype
