#include "core/completion/asking/example_cache.h"

#include <algorithm>
#include <cmath>

#include "core/rules/built_in_lists.h"
#include "text/text.h"

namespace nimbletype {
namespace {

constexpr double mostExamples = 20;
constexpr int spare = 10;  // for those that stand in the field

// Suggestions were taken here, or would be.
bool isWanted(const LeftField& field, const Preferences& prefs, const RuleDecision& decision) {
  return field.acceptedSomething || (prefs.memoryRecordAll.get() && decision.enabled);
}

bool isPrivate(const LeftField& field) {
  const FieldSnapshot& snapshot = field.snapshot;
  return snapshot.isSecure || snapshot.isLocal || field.isTerminal || field.isPrivateWindow ||
         isOffByDefault(snapshot.bundleID);
}

int limitOf(const Preferences& prefs) {
  const double strength = prefs.memoryStrength.get();
  return std::isfinite(strength) ? static_cast<int>(std::round(std::clamp(strength, 0.0, mostExamples))) : 0;
}

}  // namespace

bool mayRemember(const LeftField& field, const Preferences& prefs, const AppRules& rules) {
  if (!prefs.isEnabled.get() || !prefs.memoryEnabled.get() || isPrivate(field)) return false;
  const FieldSnapshot& snapshot = field.snapshot;
  const auto decision = rules.decision(snapshot.bundleID, snapshot.appName, snapshot.domain);
  const bool allowedOnSite = rules.rule(field.ruleKey).recordWriting.value_or(true);
  return isWanted(field, prefs, decision) && decision.recordWriting && allowedOnSite;
}

ExampleCache::ExampleCache(const WritingMemory& memory, const Preferences& prefs, MainLoop& loop)
    : memory_(memory), prefs_(prefs), loop_(loop) {
  const auto forget = [this] { chosen_.reset(); };
  observations_.push_back(memory.observe(forget));
  observations_.push_back(prefs.memoryStrength.observe(forget));
}

void ExampleCache::seen(const FieldSnapshot& snapshot) {
  if (!prefs_.memoryEnabled.get()) return;
  // A message that was sent makes room for another one.
  const bool isEmpty = text::isBlank(snapshot.before) && text::isBlank(snapshot.after);
  const bool entered = snapshot.fieldKey != fieldKey_ || isEmpty;
  if (entered) chosen_.reset();
  fieldKey_ = snapshot.fieldKey;
  soon_ = loop_.after(entered ? Milliseconds(0) : pause, [this, snapshot] { choose(snapshot); });
}

const std::vector<std::string>& ExampleCache::examples(const FieldSnapshot& snapshot) {
  static const std::vector<std::string> none;
  if (!prefs_.memoryEnabled.get()) return none;
  if (!chosen_ || snapshot.fieldKey != fieldKey_) {
    fieldKey_ = snapshot.fieldKey;
    choose(snapshot);
  }
  return *chosen_;
}

// What the model reads anyway tells it nothing new about the writer, and leads it to say it again.
void ExampleCache::choose(const FieldSnapshot& snapshot) {
  soon_.cancel();
  const int limit = limitOf(prefs_);
  const std::string appKey = fieldRuleKey(snapshot), whole = snapshot.before + snapshot.after;
  auto chosen = memory_.passages(snapshot.before, appKey, limit > 0 ? limit + spare : 0);
  std::erase_if(chosen, [&](const std::string& passage) { return whole.find(passage) != std::string::npos; });
  chosen.resize(std::min(chosen.size(), static_cast<std::size_t>(limit)));
  chosen_ = std::move(chosen);
}

}  // namespace nimbletype
