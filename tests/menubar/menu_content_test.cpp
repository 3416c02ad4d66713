#include "menubar/menu_content.h"

#include <gtest/gtest.h>

#include "menubar/prompt_texts.h"
#include "menubar/status_icon.h"

namespace nimbletype {
namespace {

const WallTime halfPastTwo =
    std::chrono::sys_days{std::chrono::year(2025) / 3 / 7} + std::chrono::minutes(870);

MenuState stateWith(const std::function<void(MenuState&)>& change) {
  MenuState state{.frontApp = "Mail",
                  .wordsToday = 86,
                  .summary = "About 2 min of typing today. 412 words this week.",
                  .locale = "en_GB",
                  .timeZone = "UTC"};
  change(state);
  return state;
}

// One line for a row: what it shows and, after ">", that it can be chosen.
std::string line(const MenuRow& row) {
  std::string out(static_cast<std::size_t>(row.indent) * 2, ' ');
  if (!row.symbol.empty()) out += "[" + row.symbol + "] ";
  if (row.isChecked) out += *row.isChecked ? "[x] " : "[ ] ";
  out += row.text;
  if (!row.note.empty()) out += " (" + row.note + ")";
  if (row.isUnfolded) out += *row.isUnfolded ? " v" : " <";
  if (!row.shortcut.empty()) out += " " + row.shortcut;
  if (row.action != MenuAction::none) out += row.isEnabled ? " >" : " x";
  return out;
}

std::string drawn(const MenuContent& content) {
  std::string out;
  for (const auto& group : content.groups) {
    if (!out.empty()) out += "--\n";
    for (const MenuRow& row : group) out += line(row) + "\n";
  }
  return out;
}

TEST(MenuContent, ShowsEverythingInItsPlace) {
  EXPECT_EQ(drawn(menuContent(stateWith([](MenuState& s) {
                                s.rivals = {"Tab Type"};
                                s.showsCount = true;
                                s.failure = "Ollama isn't running.";
                                s.download = MenuState::Download{2'000'000'000, 5'000'000'000};
                              }),
                              true)),
            R"(Paused while Tab Type is open
Ollama isn't running.
Downloading the model (2 GB of 5 GB)
--
86 (words saved today)
About 2 min of typing today. 412 words this week.
--
[pause.fill] Pause in Mail (Pauses for 15 minutes.) >
[pause.fill] Pause Everywhere v >
  For 15 Minutes >
  For 1 Hour >
  For 4 Hours >
  Until I Resume >
--
[xmark] Quit Tab Type >
--
[x] Show Count in Menu Bar >
[pencil.and.scribble] Open Playground >
[gearshape] Settings Ctrl+, >
[power] Quit Nimbletype Ctrl+Q >
)");
  EXPECT_EQ(drawn(menuContent(stateWith([](MenuState& s) {
                                s.hasAccess = false;
                                s.wordsToday = 1;
                                s.frontApp = "";
                                s.isPausedEverywhere = true;
                                s.rivals = {"Tab Type", "InlineAI"};
                                s.quitState = QuitState::refused;
                              }),
                              true)),
            R"(Needs Accessibility access
Grant Accessibility Access… >
--
1 (word saved today)
About 2 min of typing today. 412 words this week.
--
[play.fill] Resume Everywhere (Paused everywhere) >
--
[xmark] Force Quit Tab Type and InlineAI >
--
[ ] Show Count in Menu Bar >
[pencil.and.scribble] Open Playground >
[gearshape] Settings Ctrl+, >
[power] Quit Nimbletype Ctrl+Q >
)");
}

// Every state has all that the ones below it have: the first thing in this order is the one that is named.
TEST(MenuContent, NamesOneThing) {
  struct Step {
    const char* line;
    const char* symbol;
    std::function<void(MenuState&)> change;
  };
  const Step steps[] = {
      {"Ready", "pencil.and.scribble", [](MenuState&) {}},
      {"Paused while Mail is open", "pause.circle.fill", [](MenuState& s) { s.isFrontAppOff = true; }},
      {"Paused until 14:30", "pause.circle.fill", [](MenuState& s) { s.frontAppPausedUntil = halfPastTwo; }},
      {"Paused until you resume", "pause.circle.fill", [](MenuState& s) { s.isPausedEverywhere = true; }},
      {"Paused until 15:30", "pause.circle.fill",
       [](MenuState& s) { s.pausedUntil = halfPastTwo + std::chrono::hours(1); }},
      {"Paused while Tab Type is open", "pause.circle.fill", [](MenuState& s) { s.rivals = {"Tab Type"}; }},
      {"Needs Accessibility access", "exclamationmark.circle.fill",
       [](MenuState& s) { s.hasAccess = false; }}};
  MenuState state = stateWith([](MenuState&) {});
  for (const Step& step : steps) {
    step.change(state);
    EXPECT_EQ(statusLine(state).text, step.line);
    EXPECT_EQ(statusIcon(state), (StatusIcon{step.symbol, "", std::string("Nimbletype: ") + step.line}));
  }
}

TEST(MenuContent, CountsBesideTheIconFromTheFirstWord) {
  const auto title = [](bool shows, std::int64_t words) {
    return statusIcon(stateWith([&](MenuState& s) { s.showsCount = shows, s.wordsToday = words; })).title;
  };
  EXPECT_EQ(title(true, 0), "");
  EXPECT_EQ(title(true, 1), "1");
  EXPECT_EQ(title(true, 1234), "1,234");
  EXPECT_EQ(title(false, 1234), "");
}

TEST(PromptTexts, SayWhatHappensAndWhatToDo) {
  const std::vector<std::string> one{"Tab Type"}, two{"Tab Type", "InlineAI"};
  const auto body = [](const std::vector<std::string>& names, QuitState state, bool haveQuit = false) {
    return rivalPromptText(names, state, haveQuit, true).body;
  };
  EXPECT_EQ(
      body(one, QuitState::idle),
      "Both apps answer the Tab key, and macOS gives it to Tab Type. Nimbletype stays paused in your other "
      "apps until it quits.");
  EXPECT_EQ(
      body(two, QuitState::idle),
      "These apps answer the Tab key before Nimbletype. Nimbletype stays paused in your other apps until "
      "they quit.");
  EXPECT_EQ(body(one, QuitState::refused),
            "Tab Type didn't quit. It may be showing a dialog. Force Quit closes it right away.");
  EXPECT_EQ(
      body(two, QuitState::refused),
      "Tab Type and InlineAI didn't quit. They may be showing a dialog. Force Quit closes them right away.");
  EXPECT_EQ(body(one, QuitState::idle, true), "Tab Type quit, so your suggestions are back in every app.");
  EXPECT_EQ(hiddenIconText("Ice", true).body, "Ice is hiding it. In its settings, set Nimbletype to show.");
  EXPECT_EQ(hiddenIconText("", true).wayIn,
            "Until then, open Nimbletype from Applications to reach Settings.");
}

}  // namespace
}  // namespace nimbletype
