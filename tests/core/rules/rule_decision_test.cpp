#include "core/rules/rule_decision.h"

#include <gtest/gtest.h>

namespace nimbletype {
namespace {

using namespace std::chrono_literals;

const WallTime now = std::chrono::sys_days{std::chrono::March / 7 / 2025} + 9h;
constexpr AppRule on{.mode = RuleMode::on};
constexpr AppRule off{.mode = RuleMode::off};

struct DecisionCase {
  const char *name, *reason;  // empty: enabled
  RulesState state{};
  std::optional<std::string_view> domain{};
  std::string bundleID = "com.example.notes";
  GeneralRule general{};
};

std::vector<DecisionCase> decisionCases() {
  const std::string app = "app:com.example.notes", site = "web:example.com";
  const std::string terminal = "com.apple.Terminal", xcode = "com.apple.dt.Xcode";
  const GeneralRule offByDefault{.enabledByDefault = false}, editors{.codeEditorsEnabled = true};
  const GeneralRule onlyEditors{.enabledByDefault = false, .codeEditorsEnabled = true};
  const WallTime soon = now + 1s, over = now - 1s;
  return {
      {"nothing set", ""},
      {"paused everywhere comes first", "Paused everywhere", {{{app, on}}, {{app, soon}}, now + 1ms}},
      {"paused until resumed", "Paused everywhere", {.globalPauseUntil = untilResumed}},
      {"global pause over", "", {.globalPauseUntil = now}},
      {"site pause first",
       "Paused on example.com",
       {{{site, on}}, {{site, soon}, {app, soon}}},
       "example.com"},
      {"site's own name",
       "Paused on Example",
       {.pauses = {{site, soon}}, .names = {{site, "Example"}}},
       "example.com"},
      {"site without a name", "Paused on this site", {.pauses = {{"web: ", soon}}}, " "},
      {"site pause elsewhere", "", {.pauses = {{site, soon}}}, "www.example.com"},
      {"no browser", "", {{{site, off}}, {{site, soon}}}},
      {"app pause beats a rule for the site",
       "Paused in Notes",
       {{{site, on}}, {{app, soon}}},
       "example.com"},
      {"pause ended a second ago", "", {.pauses = {{app, over}, {site, over}}}, "example.com"},
      {"site off beats app on",
       "Off on Example",
       {.rules = {{site, off}, {app, on}}, .names = {{site, "Example"}}},
       "example.com"},
      {"site on beats app off", "", {{{site, on}, {app, off}}}, "example.com"},
      {"site inherits, app off", "Off in Notes", {{{site, {}}, {app, off}}}, "example.com"},
      {"off by default", "Off in Notes by default", {}, {}, terminal},
      {"off by default, turned on", "", {{{"app:" + terminal, on}}}, {}, terminal},
      {"off by default, rule inherits", "Off in Notes by default", {{{"app:" + terminal, {}}}}, {}, terminal},
      {"code editor", "Off in code editors", {}, {}, xcode},
      {"unlisted JetBrains IDE", "Off in code editors", {}, {}, "com.jetbrains.newone"},
      {"code editor on Linux", "Off in code editors", {}, {}, "jetbrains-clion"},
      {"not quite JetBrains", "", {}, {}, "com.jetbrainsish"},
      {"code editor turned on", "", {{{"app:" + xcode, on}}}, {}, xcode},
      {"code editors on", "", {}, {}, xcode, editors},
      {"code editors on, all else off", "Off unless turned on per app", {}, {}, xcode, onlyEditors},
      {"off unless turned on", "Off unless turned on per app", {}, {}, "com.example.notes", offByDefault},
      {"turned on", "", {{{app, on}}}, {}, "com.example.notes", offByDefault},
  };
}

TEST(RuleDecision, TheFirstMatchWins) {
  for (const auto& c : decisionCases()) {
    const auto decision = decide(c.state, {c.bundleID, "Notes", c.domain}, c.general, now);
    EXPECT_EQ(decision.reason, c.reason) << c.name;
    EXPECT_EQ(decision.enabled, decision.reason.empty()) << c.name;
  }
  EXPECT_EQ(decide({.rules = {{"app:x", off}}}, {"x", "", std::nullopt}, {}, now).reason, "Off in this app");
}

TEST(RuleDecision, OverridesComeFromTheAppElseFromTheGeneralSettings) {
  const GeneralRule general{
      .insertion = InsertionMethod::paste, .length = CompletionLength::longLength, .recordWriting = true};
  const AppRule all{RuleMode::off, false, InsertionMethod::accessibility, CompletionLength::shortLength,
                    false};
  const RulesState state{.rules = {{"app:a", all}, {"web:example.com", all}}};
  const RuleDecision overridden{
      false, "Off in A", false, InsertionMethod::accessibility, CompletionLength::shortLength, false};
  const RuleDecision plain{true, "", true, InsertionMethod::paste, CompletionLength::longLength, true};
  EXPECT_EQ(decide(state, {"a", "A", std::nullopt}, general, now), overridden);
  EXPECT_EQ(decide(state, {"b", "B", std::nullopt}, general, now), plain);
}

}  // namespace
}  // namespace nimbletype
