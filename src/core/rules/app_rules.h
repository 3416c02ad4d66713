#pragma once
#include <memory>
#include <nlohmann/json_fwd.hpp>

#include "core/rules/rule_decision.h"
#include "platform/system/observers.h"

namespace nimbletype {

class FileStore;
class Preferences;
class RulesFile;
class SystemLog;

// The user's rules and pauses, kept in a file that is written a second after the last change. Main thread
// only.
class AppRules {
 public:
  static constexpr std::chrono::seconds shortPause{900};
  static constexpr Milliseconds saveDelay{1000};
  // The machine may sleep or its clock be set while a pause lasts.
  static constexpr Milliseconds longestWait{60'000};

  AppRules(const Preferences& preferences, FileStore& file, MainLoop& loop, SystemLog& log);
  ~AppRules();  // saves what is still unsaved

  RuleDecision decision(std::string_view bundleID, std::string_view appName,
                        const std::optional<std::string>& domain) const;
  const RulesState& state() const { return state_; }
  // What the file holds once it is saved.
  nlohmann::ordered_json json() const;
  // Told after every change of the state, and when a pause has ended by itself.
  [[nodiscard]] Task observe(Observers::Callback changed) const { return observers_.add(std::move(changed)); }

  // The rule of this key, or one that leaves everything to the general settings.
  AppRule rule(const std::string& key) const;
  void setRule(const std::string& key, const AppRule& rule);
  void removeRule(const std::string& key);
  void setName(const std::string& key, const std::string& name);

  bool isPaused(const std::string& key) const;
  void pause(const std::string& key, std::chrono::seconds duration);
  void resume(const std::string& key);
  // Pauses for `shortPause`, under this name, or resumes what is paused.
  void togglePause(const std::string& key, const std::string& name);

  bool isPausedEverywhere() const;
  // Without a duration until resumed.
  void pauseEverywhere(std::optional<std::chrono::seconds> duration = std::nullopt);
  void resumeEverywhere();
  void togglePauseEverywhere();

  // Forgets all rules, pauses and names.
  void clear();
  void saveNow();

 private:
  void change(RulesState next);
  void awaitPauseEnd();

  const Preferences& preferences_;
  MainLoop& loop_;
  std::unique_ptr<RulesFile> file_;
  RulesState state_;
  Observers observers_;
  bool unsaved_ = false;
  Task save_, pauseEnd_;
};

}  // namespace nimbletype
