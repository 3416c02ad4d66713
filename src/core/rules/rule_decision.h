#pragma once
#include "core/rules/rule_types.h"

namespace nimbletype {

// Whether suggestions may appear in a field, and the settings that hold there.
struct RuleDecision {
  bool enabled = true;
  std::string reason{};  // why not; empty when enabled
  bool tabAccepts = true;
  InsertionMethod insertion = InsertionMethod::typing;
  CompletionLength length = CompletionLength::medium;
  bool recordWriting = false;
  bool operator==(const RuleDecision&) const = default;
};

// The field that is asked about. The domain is absent outside browsers.
struct RuleSubject {
  std::string_view bundleID;
  std::string_view appName;
  std::optional<std::string_view> domain;
};

// The general settings that rules fall back on.
struct GeneralRule {
  bool enabledByDefault = true;
  bool codeEditorsEnabled = false;
  InsertionMethod insertion = InsertionMethod::typing;
  CompletionLength length = CompletionLength::medium;
  bool recordWriting = false;
};

RuleDecision decide(const RulesState& state, const RuleSubject& subject, const GeneralRule& general,
                    WallTime now);

}  // namespace nimbletype
