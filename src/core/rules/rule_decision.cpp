#include "core/rules/rule_decision.h"

#include "core/rules/built_in_lists.h"
#include "text/text.h"

namespace nimbletype {
namespace {

template <typename Value>
std::optional<Value> lookedUp(const std::map<std::string, Value>& map, const std::string& key) {
  const auto found = map.find(key);
  return found == map.end() ? std::nullopt : std::optional(found->second);
}

std::string nameOr(const std::string& name, std::string_view fallback) {
  return text::isBlank(name) ? std::string(fallback) : name;
}

// Why suggestions may not appear; none when they may. The first answer counts.
class Blocker {
 public:
  Blocker(const RulesState& state, const RuleSubject& subject, const GeneralRule& general, WallTime now)
      : state_(state),
        subject_(subject),
        general_(general),
        now_(now),
        appKey_(appRuleKey(subject.bundleID)) {
    if (subject.domain && !subject.domain->empty()) siteKey_ = webRuleKey(*subject.domain);
  }

  std::optional<std::string> reason() const {
    if (state_.globalPauseUntil && *state_.globalPauseUntil > now_) return "Paused everywhere";
    if (siteKey_ && isPaused(*siteKey_)) return "Paused on " + siteName();
    if (isPaused(appKey_)) return "Paused in " + appName();
    if (const auto site = siteKey_ ? mode(*siteKey_) : RuleMode::inherit; site != RuleMode::inherit)
      return site == RuleMode::off ? std::optional("Off on " + siteName()) : std::nullopt;
    if (const auto app = mode(appKey_); app != RuleMode::inherit)
      return app == RuleMode::off ? std::optional("Off in " + appName()) : std::nullopt;
    return generalReason();
  }

 private:
  std::optional<std::string> generalReason() const {
    if (isOffByDefault(subject_.bundleID)) return "Off in " + appName() + " by default";
    if (isCodeEditor(subject_.bundleID) && !general_.codeEditorsEnabled) return "Off in code editors";
    if (!general_.enabledByDefault) return "Off unless turned on per app";
    return std::nullopt;
  }
  bool isPaused(const std::string& key) const {
    const auto until = lookedUp(state_.pauses, key);
    return until && *until > now_;
  }
  RuleMode mode(const std::string& key) const { return lookedUp(state_.rules, key).value_or(AppRule()).mode; }
  std::string siteName() const {
    return nameOr(nameOr(lookedUp(state_.names, *siteKey_).value_or(""), *subject_.domain), "this site");
  }
  std::string appName() const { return nameOr(std::string(subject_.appName), "this app"); }

  const RulesState& state_;
  const RuleSubject& subject_;
  const GeneralRule& general_;
  WallTime now_;
  std::string appKey_;
  std::optional<std::string> siteKey_;
};

}  // namespace

RuleDecision decide(const RulesState& state, const RuleSubject& subject, const GeneralRule& general,
                    WallTime now) {
  const auto reason = Blocker(state, subject, general, now).reason();
  const auto app = lookedUp(state.rules, appRuleKey(subject.bundleID)).value_or(AppRule());
  return {.enabled = !reason,
          .reason = reason.value_or(""),
          .tabAccepts = app.tabAccepts.value_or(true),
          .insertion = app.insertion.value_or(general.insertion),
          .length = app.length.value_or(general.length),
          .recordWriting = app.recordWriting.value_or(general.recordWriting)};
}

}  // namespace nimbletype
