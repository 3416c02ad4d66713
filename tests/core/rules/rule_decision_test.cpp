#include "core/rules/rule_decision.h"

#include <gtest/gtest.h>

namespace nimbletype {
namespace {

using namespace std::chrono_literals;

const WallTime now = std::chrono::sys_days{std::chrono::March / 7 / 2025} + 9h;
constexpr AppRule on{.mode = RuleMode::on};
constexpr AppRule off{.mode = RuleMode::off};

struct DecisionCase {
  std::string name{};
  RulesState state{};
  std::string bundleID = "com.example.notes";
  std::optional<std::string_view> domain{};
  GeneralRule general{};
  std::string reason{};  // empty: enabled
};

std::vector<DecisionCase> decisionCases() {
  const std::string app = "app:com.example.notes", site = "web:example.com";
  const std::string terminal = "com.apple.Terminal", xcode = "com.apple.dt.Xcode";
  return {
      {.name = "nothing set"},
      {.name = "paused everywhere comes first",
       .state = {.rules = {{app, on}}, .pauses = {{app, now + 1h}}, .globalPauseUntil = now + 1ms},
       .reason = "Paused everywhere"},
      {.name = "paused until resumed",
       .state = {.globalPauseUntil = untilResumed},
       .reason = "Paused everywhere"},
      {.name = "global pause over", .state = {.globalPauseUntil = now}},
      {.name = "site pause before app pause and rules",
       .state = {.rules = {{site, on}}, .pauses = {{site, now + 1s}, {app, now + 1s}}},
       .domain = "example.com",
       .reason = "Paused on example.com"},
      {.name = "site's own name",
       .state = {.pauses = {{site, now + 1s}}, .names = {{site, "Example"}}},
       .domain = "example.com",
       .reason = "Paused on Example"},
      {.name = "site without a name",
       .state = {.pauses = {{"web: ", now + 1s}}},
       .domain = " ",
       .reason = "Paused on this site"},
      {.name = "site pause elsewhere", .state = {.pauses = {{site, now + 1s}}}, .domain = "www.example.com"},
      {.name = "no browser", .state = {.rules = {{site, off}}, .pauses = {{site, now + 1s}}}},
      {.name = "app pause beats a rule for the site",
       .state = {.rules = {{site, on}}, .pauses = {{app, now + 1s}}},
       .domain = "example.com",
       .reason = "Paused in Notes"},
      {.name = "pause ended a second ago",
       .state = {.pauses = {{app, now - 1s}, {site, now - 1s}}},
       .domain = "example.com"},
      {.name = "site off beats app on",
       .state = {.rules = {{site, off}, {app, on}}, .names = {{site, "Example"}}},
       .domain = "example.com",
       .reason = "Off on Example"},
      {.name = "site on beats app off",
       .state = {.rules = {{site, on}, {app, off}}},
       .domain = "example.com"},
      {.name = "site inherits, app off",
       .state = {.rules = {{site, AppRule()}, {app, off}}},
       .domain = "example.com",
       .reason = "Off in Notes"},
      {.name = "off by default", .bundleID = terminal, .reason = "Off in Notes by default"},
      {.name = "off by default, turned on",
       .state = {.rules = {{"app:" + terminal, on}}},
       .bundleID = terminal},
      {.name = "off by default, rule inherits",
       .state = {.rules = {{"app:" + terminal, AppRule()}}},
       .bundleID = terminal,
       .reason = "Off in Notes by default"},
      {.name = "code editor", .bundleID = xcode, .reason = "Off in code editors"},
      {.name = "unlisted JetBrains IDE", .bundleID = "com.jetbrains.newone", .reason = "Off in code editors"},
      {.name = "code editor on Linux", .bundleID = "jetbrains-clion", .reason = "Off in code editors"},
      {.name = "not quite JetBrains", .bundleID = "com.jetbrainsish"},
      {.name = "code editor turned on", .state = {.rules = {{"app:" + xcode, on}}}, .bundleID = xcode},
      {.name = "code editors on", .bundleID = xcode, .general = {.codeEditorsEnabled = true}},
      {.name = "code editors on, all else off",
       .bundleID = xcode,
       .general = {.enabledByDefault = false, .codeEditorsEnabled = true},
       .reason = "Off unless turned on per app"},
      {.name = "off unless turned on",
       .general = {.enabledByDefault = false},
       .reason = "Off unless turned on per app"},
      {.name = "turned on", .state = {.rules = {{app, on}}}, .general = {.enabledByDefault = false}},
  };
}

TEST(RuleDecision, TheFirstMatchWins) {
  for (const auto& c : decisionCases()) {
    SCOPED_TRACE(c.name);
    const auto decision = decide(c.state, {c.bundleID, "Notes", c.domain}, c.general, now);
    EXPECT_EQ(decision.reason, c.reason);
    EXPECT_EQ(decision.enabled, c.reason.empty());
  }
}

TEST(RuleDecision, AnAppWithoutANameIsThisApp) {
  const RulesState state{.rules = {{"app:x", off}}};
  EXPECT_EQ(decide(state, {"x", "", std::nullopt}, {}, now).reason, "Off in this app");
}

TEST(RuleDecision, OverridesComeFromTheAppElseFromTheGeneralSettings) {
  const GeneralRule general{
      .insertion = InsertionMethod::paste, .length = CompletionLength::longLength, .recordWriting = true};
  const AppRule all{.mode = RuleMode::off,
                    .tabAccepts = false,
                    .insertion = InsertionMethod::accessibility,
                    .length = CompletionLength::shortLength,
                    .recordWriting = false};
  const RulesState state{.rules = {{"app:a", all}, {"web:example.com", all}}};
  const RuleDecision overridden{.enabled = false,
                                .reason = "Off in A",
                                .tabAccepts = false,
                                .insertion = InsertionMethod::accessibility,
                                .length = CompletionLength::shortLength,
                                .recordWriting = false};
  const RuleDecision plain{.tabAccepts = true,
                           .insertion = InsertionMethod::paste,
                           .length = CompletionLength::longLength,
                           .recordWriting = true};
  EXPECT_EQ(decide(state, {"a", "A", std::nullopt}, general, now), overridden);
  EXPECT_EQ(decide(state, {"b", "B", std::nullopt}, general, now), plain);
}

}  // namespace
}  // namespace nimbletype
