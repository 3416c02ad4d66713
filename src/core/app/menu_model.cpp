#include "core/app/menu_model.h"

#include <initializer_list>

#include "core/settings/preferences.h"

namespace nimbletype {
namespace {

using namespace std::chrono_literals;

std::optional<MenuState::Download> downloadOf(const ModelPhase& phase) {
  if (phase.state != ModelPhase::Case::downloading) return std::nullopt;
  return MenuState::Download{phase.bytesWritten, phase.bytesExpected};
}

// What happens at one caret is no failure of the engine.
bool isEngineFailure(const Status& status) {
  return status.state == Status::Case::failed && status != Status::noCaret();
}

}  // namespace

void tellPauses(MenuState& state, const AppRules& rules, const std::optional<RunningApp>& front) {
  state.isPausedEverywhere = rules.isPausedEverywhere();
  if (state.isPausedEverywhere && rules.state().globalPauseUntil != untilResumed)
    state.pausedUntil = rules.state().globalPauseUntil;
  if (!front) return;
  state.frontApp = front->appName;
  const std::string key = appRuleKey(front->bundleID);
  if (rules.isPaused(key)) state.frontAppPausedUntil = rules.state().pauses.at(key);
  state.isFrontAppOff = !state.isPausedEverywhere && !state.frontAppPausedUntil &&
                        !rules.decision(front->bundleID, front->appName, std::nullopt).enabled;
}

MenuModel::MenuModel(const Services& services, Ways ways) : s_(services), ways_(std::move(ways)) {
  const auto changed = [this] { observers_.notify(); };
  observations_.push_back(s_.rules.observe(changed));
  observations_.push_back(s_.stats.observe(changed));
  observations_.push_back(s_.permissions.observe(changed));
  observations_.push_back(s_.rivals.running().observe(changed));
  observations_.push_back(s_.rivals.quitState().observe(changed));
  observations_.push_back(s_.modelStore.observe(changed));
  observations_.push_back(s_.status.observe([this] { statusChanged(); }));
  observations_.push_back(s_.frontApp.observe([this] { frontAppChanged(s_.frontApp.get()); }));
  for (const AnySetting* setting : std::initializer_list<const AnySetting*>{
           &s_.prefs.isEnabled, &s_.prefs.enabledByDefault, &s_.prefs.codeEditorsEnabled})
    observations_.push_back(setting->observe(changed));
}

MenuState MenuModel::state() const {
  MenuState state;
  state.hasAccess = s_.permissions.accessibility();
  for (const RivalApp& rival : s_.rivals.running().get()) state.rivals.push_back(rival.name);
  state.quitState = s_.rivals.quitState().get();
  tellPauses(state, s_.rules, front_);
  if (!s_.prefs.isEnabled.get()) {
    state.isPausedEverywhere = true;
    state.pausedUntil.reset();
  }
  state.failure = failure_;
  state.download = downloadOf(s_.modelStore.phase());
  state.wordsToday = s_.stats.today().words;
  state.summary = s_.stats.summary();
  state.showsCount = s_.prefs.showWordCountInMenuBar.get();
  const Region region = s_.region.region();
  state.locale = region.locale;
  state.timeZone = region.timeZone;
  return state;
}

void MenuModel::lookAgain() {
  frontAppChanged(s_.workspace.frontmost());
}

void MenuModel::frontAppChanged(const std::optional<RunningApp>& app) {
  if (app && app->isOurs) return;
  if (app == front_) return;
  front_ = app;
  observers_.notify();
}

void MenuModel::statusChanged() {
  const Status& status = s_.status.get();
  const std::string before = failure_;
  if (isEngineFailure(status)) failure_ = status.label();
  if (status.state == Status::Case::showing) failure_.clear();
  if (failure_ != before) observers_.notify();
}

void MenuModel::act(MenuAction action) {
  switch (action) {
    case MenuAction::grantAccess:
      return s_.permissions.askForAccessibility();
    case MenuAction::pauseApp:
      if (front_) s_.rules.togglePause(appRuleKey(front_->bundleID), front_->appName);
      return;
    case MenuAction::resumeApp:
      return resumeFrontApp();
    case MenuAction::pauseFor15Minutes:
      return s_.rules.pauseEverywhere(15min);
    case MenuAction::pauseFor1Hour:
      return s_.rules.pauseEverywhere(1h);
    case MenuAction::pauseFor4Hours:
      return s_.rules.pauseEverywhere(4h);
    case MenuAction::pauseUntilResumed:
      return s_.rules.pauseEverywhere();
    case MenuAction::resumeEverywhere:
      s_.prefs.isEnabled.set(true);
      return s_.rules.resumeEverywhere();
    case MenuAction::quitRivals:
      return s_.rivals.quitRivals(false);
    case MenuAction::forceQuitRivals:
      return s_.rivals.quitRivals(true);
    case MenuAction::toggleCount:
      return s_.prefs.showWordCountInMenuBar.set(!s_.prefs.showWordCountInMenuBar.get());
    case MenuAction::openPlayground:
      return ways_.openPlayground();
    case MenuAction::openSettings:
      return ways_.openSettings();
    case MenuAction::quit:
      return ways_.quit();
    case MenuAction::none:
    case MenuAction::unfoldChoices:
      return;
  }
}

// Where it is off for another reason than a pause, the user's word is a rule.
void MenuModel::resumeFrontApp() {
  if (!front_) return;
  const std::string key = appRuleKey(front_->bundleID);
  s_.rules.resume(key);
  if (s_.rules.isPausedEverywhere()) return;
  if (s_.rules.decision(front_->bundleID, front_->appName, std::nullopt).enabled) return;
  AppRule rule = s_.rules.rule(key);
  rule.mode = RuleMode::on;
  s_.rules.setName(key, front_->appName);
  s_.rules.setRule(key, rule);
}

}  // namespace nimbletype
