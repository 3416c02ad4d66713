#include "windows/prompts/rival_prompt.h"

#include <QCheckBox>
#include <QPushButton>
#include <algorithm>

#include "menubar/prompt_texts.h"
#include "platform/system/desktop_kind.h"
#include "windows/kit/app_icon.h"

namespace nimbletype {
namespace {

constexpr int iconSize = 44;

}  // namespace

RivalPrompt::RivalPrompt(RivalWatcher& watcher, Preferences& prefs)
    : PromptWindow("pause.circle.fill"), watcher_(watcher), prefs_(prefs) {
  nextTime_ = addCheckBox(QString::fromStdString(nextTimeText()),
                          [this](bool on) { prefs_.quitRivalsAutomatically.set(on); });
  later_ = addButton("Not Now", "plain", [this] { close(); });
  chief_ = addButton({}, "chief", [this] { act(); });
  const auto changed = [this] { follow(); };
  observations_.push_back(watcher_.running().observe(changed));
  observations_.push_back(watcher_.quitState().observe(changed));
  observations_.push_back(prefs_.quitRivalsAutomatically.observe(changed));
  follow();
}

void RivalPrompt::act() {
  if (watcher_.running().get().empty())
    close();
  else
    watcher_.quitRivals(watcher_.quitState().get() == QuitState::refused);
}

void RivalPrompt::follow() {
  const auto& running = watcher_.running().get();
  if (watcher_.quitState().get() == QuitState::idle && !running.empty()) rivals_.clear();
  for (const RivalApp& rival : running)
    if (std::ranges::count(rivals_, rival) == 0) rivals_.push_back(rival);
  if (!rivals_.empty()) setPicture(appIcon(rivals_.front().icon, iconSize, devicePixelRatioF()));
  std::vector<std::string> names;
  for (const RivalApp& rival : running.empty() ? rivals_ : running) names.push_back(rival.name);
  const RivalPromptText text = rivalPromptText(names, watcher_.quitState().get(), running.empty(), onMac);
  setTexts(QString::fromStdString(text.title), QString::fromStdString(text.body));
  nextTime_->setChecked(prefs_.quitRivalsAutomatically.get());
  later_->setVisible(!text.isDone);
  chief_->setText(text.isDone ? "Done" : QString::fromStdString(text.buttonText));
  chief_->setEnabled(text.isDone || text.button != RivalPromptText::Button::none);
}

}  // namespace nimbletype
