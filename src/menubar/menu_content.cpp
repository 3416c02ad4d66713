#include "menubar/menu_content.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

#include "text/format/byte_count.h"
#include "text/format/date_format.h"
#include "text/format/number_format.h"
#include "text/format/word_list.h"

namespace nimbletype {
namespace {

using Kind = MenuRow::Kind;
using Rows = std::vector<MenuRow>;

std::string untilText(const MenuState& state, WallTime end) {
  return "Paused until " + text::shortTime(end, state.locale, state.timeZone);
}

MenuRow progressRow(const MenuState::Download& download, const std::string& locale) {
  MenuRow row{.kind = Kind::progress, .text = "Downloading the model"};
  if (download.bytesExpected <= 0) return row;
  row.note = text::formatByteCount(download.bytesWritten, locale) + " of " +
             text::formatByteCount(download.bytesExpected, locale);
  row.progress = std::clamp(
      static_cast<double>(download.bytesWritten) / static_cast<double>(download.bytesExpected), 0.0, 1.0);
  return row;
}

Rows statusRows(const MenuState& state) {
  const StatusLine line = statusLine(state);
  Rows rows{{.kind = Kind::status, .text = line.text, .tone = line.tone}};
  if (!state.hasAccess)
    rows.push_back(
        {.kind = Kind::button, .text = "Grant Accessibility Access…", .action = MenuAction::grantAccess});
  if (!state.failure.empty())
    rows.push_back({.kind = Kind::note, .text = state.failure, .tone = Tone::trouble});
  if (state.download) rows.push_back(progressRow(*state.download, state.locale));
  return rows;
}

Rows figureRows(const MenuState& state) {
  return {{.kind = Kind::figure,
           .text = text::formatNumber(state.wordsToday, state.locale),
           .note = state.wordsToday == 1 ? "word saved today" : "words saved today"},
          {.kind = Kind::note, .text = state.summary}};
}

bool isFrontAppPaused(const MenuState& state) {
  return state.frontAppPausedUntil || state.isFrontAppOff;
}

MenuRow appRow(const MenuState& state) {
  if (isFrontAppPaused(state))
    return {.text = "Resume in " + state.frontApp, .symbol = "play.fill", .action = MenuAction::resumeApp};
  return {.text = "Pause in " + state.frontApp,
          .note = "Pauses for 15 minutes.",
          .symbol = "pause.fill",
          .action = MenuAction::pauseApp};
}

Rows everywhereRows(const MenuState& state, bool choicesUnfolded) {
  if (state.isPausedEverywhere)
    return {{.text = "Resume Everywhere",
             .note = "Paused everywhere",
             .symbol = "play.fill",
             .action = MenuAction::resumeEverywhere}};
  Rows rows{{.text = "Pause Everywhere",
             .symbol = "pause.fill",
             .action = MenuAction::unfoldChoices,
             .isUnfolded = choicesUnfolded}};
  if (!choicesUnfolded) return rows;
  constexpr std::pair<const char*, MenuAction> choices[] = {
      {"For 15 Minutes", MenuAction::pauseFor15Minutes},
      {"For 1 Hour", MenuAction::pauseFor1Hour},
      {"For 4 Hours", MenuAction::pauseFor4Hours},
      {"Until I Resume", MenuAction::pauseUntilResumed}};
  for (const auto& [text, action] : choices) rows.push_back({.text = text, .action = action, .indent = 1});
  return rows;
}

Rows pauseRows(const MenuState& state, bool choicesUnfolded) {
  Rows rows;
  if (!state.frontApp.empty()) rows.push_back(appRow(state));
  std::ranges::move(everywhereRows(state, choicesUnfolded), std::back_inserter(rows));
  return rows;
}

Rows rivalRows(const MenuState& state) {
  if (state.rivals.empty()) return {};
  const std::string names = text::wordList(state.rivals);
  if (state.quitState == QuitState::refused)
    return {{.text = "Force Quit " + names, .symbol = "xmark", .action = MenuAction::forceQuitRivals}};
  return {{.text = "Quit " + names,
           .symbol = "xmark",
           .action = MenuAction::quitRivals,
           .isEnabled = state.quitState != QuitState::quitting}};
}

Rows applicationRows(const MenuState& state) {
  return {
      {.text = "Show Count in Menu Bar", .action = MenuAction::toggleCount, .isChecked = state.showsCount},
      {.text = "Open Playground", .symbol = "pencil.and.scribble", .action = MenuAction::openPlayground},
      {.text = "Settings", .symbol = "gearshape", .shortcut = "Ctrl+,", .action = MenuAction::openSettings},
      {.text = std::string("Quit ") + "Nimbletype",
       .symbol = "power",
       .shortcut = "Ctrl+Q",
       .action = MenuAction::quit}};
}

}  // namespace

StatusLine statusLine(const MenuState& state) {
  if (!state.hasAccess) return {"Needs Accessibility access", Tone::trouble};
  const auto whileOpen = [](const std::string& name) {
    return StatusLine{"Paused while " + name + " is open", Tone::paused};
  };
  if (!state.rivals.empty()) return whileOpen(state.rivals.front());
  if (state.isPausedEverywhere && state.pausedUntil)
    return {untilText(state, *state.pausedUntil), Tone::paused};
  if (state.isPausedEverywhere) return {"Paused until you resume", Tone::paused};
  if (state.frontAppPausedUntil) return {untilText(state, *state.frontAppPausedUntil), Tone::paused};
  if (state.isFrontAppOff) return whileOpen(state.frontApp);
  return {"Ready", Tone::good};
}

MenuContent menuContent(const MenuState& state, bool choicesUnfolded) {
  MenuContent content;
  for (Rows& rows : std::to_array({statusRows(state), figureRows(state), pauseRows(state, choicesUnfolded),
                                   rivalRows(state), applicationRows(state)}))
    if (!rows.empty()) content.groups.push_back(std::move(rows));
  return content;
}

}  // namespace nimbletype
