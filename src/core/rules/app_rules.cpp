#include "core/rules/app_rules.h"

#include <algorithm>

#include "core/rules/rules_file.h"
#include "core/settings/preferences.h"

namespace nimbletype {
namespace {

// A moment so far ahead that it cannot be counted is as good as the last one there is.
WallTime later(WallTime now, std::chrono::seconds duration) {
  if (duration >= std::chrono::ceil<std::chrono::seconds>(untilResumed - now)) return untilResumed;
  return now + std::max(duration, std::chrono::seconds(0));
}

// A name is kept for as long as something else is known about its key.
void dropNameIfUnused(RulesState& state, const std::string& key) {
  if (!state.rules.contains(key) && !state.pauses.contains(key)) state.names.erase(key);
}

void dropEnded(RulesState& state, WallTime now) {
  const auto pauses = state.pauses;
  for (const auto& [key, until] : pauses) {
    if (until > now) continue;
    state.pauses.erase(key);
    dropNameIfUnused(state, key);
  }
  if (state.globalPauseUntil && *state.globalPauseUntil <= now) state.globalPauseUntil.reset();
}

std::optional<WallTime> nextPauseEnd(const RulesState& state, WallTime now) {
  std::optional<WallTime> next;
  const auto consider = [&](WallTime end) {
    if (end > now && end != untilResumed && (!next || end < *next)) next = end;
  };
  for (const auto& [key, end] : state.pauses) consider(end);
  if (state.globalPauseUntil) consider(*state.globalPauseUntil);
  return next;
}

}  // namespace

AppRules::AppRules(const Preferences& preferences, FileStore& file, MainLoop& loop, SystemLog& log)
    : preferences_(preferences),
      loop_(loop),
      file_(std::make_unique<RulesFile>(file, log)),
      state_(file_->load()) {
  dropEnded(state_, loop_.wallNow());
  awaitPauseEnd();
}

AppRules::~AppRules() {
  if (unsaved_) saveNow();
}

RuleDecision AppRules::decision(std::string_view bundleID, std::string_view appName,
                                const std::optional<std::string>& domain) const {
  const GeneralRule general{.enabledByDefault = preferences_.enabledByDefault.get(),
                            .codeEditorsEnabled = preferences_.codeEditorsEnabled.get(),
                            .insertion = preferences_.insertion.get(),
                            .length = preferences_.length.get(),
                            .recordWriting = preferences_.memoryEnabled.get()};
  return decide(state_, {bundleID, appName, domain}, general, loop_.wallNow());
}

nlohmann::ordered_json AppRules::json() const {
  return file_->json(state_);
}

AppRule AppRules::rule(const std::string& key) const {
  const auto found = state_.rules.find(key);
  return found == state_.rules.end() ? AppRule() : found->second;
}

void AppRules::setRule(const std::string& key, const AppRule& rule) {
  auto next = state_;
  next.rules.insert_or_assign(key, rule);
  change(std::move(next));
}

void AppRules::removeRule(const std::string& key) {
  auto next = state_;
  next.rules.erase(key);
  dropNameIfUnused(next, key);
  change(std::move(next));
}

void AppRules::setName(const std::string& key, const std::string& name) {
  auto next = state_;
  next.names.insert_or_assign(key, name);
  change(std::move(next));
}

bool AppRules::isPaused(const std::string& key) const {
  const auto found = state_.pauses.find(key);
  return found != state_.pauses.end() && found->second > loop_.wallNow();
}

void AppRules::pause(const std::string& key, std::chrono::seconds duration) {
  auto next = state_;
  next.pauses.insert_or_assign(key, later(loop_.wallNow(), duration));
  change(std::move(next));
}

void AppRules::resume(const std::string& key) {
  auto next = state_;
  next.pauses.erase(key);
  dropNameIfUnused(next, key);
  change(std::move(next));
}

void AppRules::togglePause(const std::string& key, const std::string& name) {
  if (isPaused(key)) return resume(key);
  auto next = state_;
  next.pauses.insert_or_assign(key, later(loop_.wallNow(), shortPause));
  next.names.insert_or_assign(key, name);
  change(std::move(next));
}

bool AppRules::isPausedEverywhere() const {
  return state_.globalPauseUntil && *state_.globalPauseUntil > loop_.wallNow();
}

void AppRules::pauseEverywhere(std::optional<std::chrono::seconds> duration) {
  auto next = state_;
  next.globalPauseUntil = duration ? later(loop_.wallNow(), *duration) : untilResumed;
  change(std::move(next));
}

void AppRules::resumeEverywhere() {
  auto next = state_;
  next.globalPauseUntil.reset();
  change(std::move(next));
}

void AppRules::togglePauseEverywhere() {
  if (isPausedEverywhere())
    resumeEverywhere();
  else
    pauseEverywhere();
}

void AppRules::clear() {
  change({});
}

void AppRules::saveNow() {
  save_.cancel();
  unsaved_ = !file_->save(state_);
}

void AppRules::change(RulesState next) {
  if (next == state_) return;
  state_ = std::move(next);
  unsaved_ = true;
  save_ = loop_.after(saveDelay, [this] { saveNow(); });
  awaitPauseEnd();
  observers_.notify();
}

void AppRules::awaitPauseEnd() {
  const WallTime now = loop_.wallNow();
  const auto end = nextPauseEnd(state_, now);
  if (!end) return pauseEnd_.cancel();
  pauseEnd_ = loop_.after(std::clamp(*end - now, Milliseconds(1), longestWait), [this, end = *end] {
    if (end > loop_.wallNow()) return awaitPauseEnd();
    auto next = state_;
    dropEnded(next, loop_.wallNow());
    change(std::move(next));
  });
}

}  // namespace nimbletype
