#include "windows/settings/settings_window.h"

#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "windows/kit/look.h"
#include "windows/kit/placing.h"
#include "windows/kit/rows.h"
#include "windows/kit/switch_button.h"

namespace nimbletype {
namespace {

constexpr int windowWidth = 520;

// Shown as it is, without telling anybody of a change.
void showState(SwitchButton& button, bool on) {
  const QSignalBlocker quiet(button);
  button.setChecked(on);
  button.update();
}

}  // namespace

SettingsWindow::SettingsWindow(const Services& services) : QDialog(nullptr, Qt::Window), s_(services) {
  setWindowTitle("Settings");
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(space::huge, space::huge, space::huge, space::huge);
  layout->setSpacing(space::medium);
  auto* title = new QLabel("General");
  title->setProperty("role", "title");
  layout->addWidget(title);
  auto* card = new RowCard;
  addLogin(*card);
  bind(
      *card, s_.prefs.showMenuBarIcon, "Show in menu bar",
      "Nimbletype lives in your menu bar from now on. Click its icon to pause it in an app or open Settings. "
      "Without the icon, start Nimbletype once more to come here.");
  bind(*card, s_.prefs.showWordCountInMenuBar, "Show Count in Menu Bar",
       "Show today's word count next to the icon");
  bind(*card, s_.prefs.remindHiddenIcon, "Tell me when the icon is hidden", {});
  bind(*card, s_.prefs.quitRivalsAutomatically, "Quit other autocomplete apps when they open", {});
  addPredictions(*card);
  layout->addWidget(card);
  setMinimumWidth(windowWidth);
  resize(windowWidth, layout->heightForWidth(windowWidth));
}

void SettingsWindow::bind(RowCard& card, Setting<bool>& setting, const QString& label, const QString& note) {
  SwitchButton* button = card.addSwitch(label, note, [&setting](bool on) { setting.set(on); });
  const auto follow = [button, &setting] { showState(*button, setting.get()); };
  observations_.push_back(setting.observe(follow));
  follow();
}

void SettingsWindow::addLogin(RowCard& card) {
  SwitchButton* button = card.addSwitch("Open at login", {}, [this](bool on) { s_.login.set(on); });
  const auto follow = [this, button] { showState(*button, s_.login.isOn()); };
  observations_.push_back(s_.login.observe(follow));
  follow();
}

void SettingsWindow::addPredictions(RowCard& card) {
  if (!s_.permissions.systemPredictionsOn()) return;
  auto* button = new QPushButton("Turn Off");
  button->setAutoDefault(false);
  connect(button, &QPushButton::clicked, this, [this] { s_.permissions.switchSystemPredictionsOff(); });
  QLabel* label = card.addRow(
      {}, "macOS can show its own grey predictions. Keeping them off avoids two suggestions at once.",
      button);
  button->setAccessibleName("Turn Off");
  const auto follow = [this, button, label] {
    const bool on = s_.permissions.systemPredictionsOn().value_or(false);
    label->setText(on ? "macOS predictions are on" : "macOS predictions are off");
    button->setVisible(on);
  };
  observations_.push_back(s_.permissions.observe(follow));
  follow();
}

void SettingsWindow::present() {
  s_.login.refresh();
  s_.permissions.refresh();
  bringToFront(*this);
}

void SettingsWindow::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Close))
    close();
  else
    QDialog::keyPressEvent(event);
}

}  // namespace nimbletype
