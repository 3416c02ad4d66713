#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "menubar/rival_watcher.h"

namespace nimbletype {

// What the menu tells of: the application as it is at this moment.
struct MenuState {
  struct Download {
    std::int64_t bytesWritten = 0, bytesExpected = 0;  // none expected: not known yet
    bool operator==(const Download&) const = default;
  };

  bool hasAccess = true;
  std::vector<std::string> rivals{};  // names of those that run
  QuitState quitState = QuitState::idle;
  // The application in front before the menu opened; empty where there is none to pause.
  std::string frontApp{};
  bool isFrontAppOff = false;  // by a rule, or by default
  std::optional<WallTime> frontAppPausedUntil{};
  bool isPausedEverywhere = false;
  std::optional<WallTime> pausedUntil{};  // everywhere; none until resumed
  std::string failure{};                  // of the engine, the last one that no suggestion has followed
  std::optional<Download> download{};     // of the model, while it is under way
  std::int64_t wordsToday = 0;
  std::string summary{};
  bool showsCount = false;
  std::string locale{}, timeZone{};
  bool operator==(const MenuState&) const = default;
};

enum class MenuAction {
  none,
  grantAccess,
  pauseApp,
  resumeApp,
  unfoldChoices,
  pauseFor15Minutes,
  pauseFor1Hour,
  pauseFor4Hours,
  pauseUntilResumed,
  resumeEverywhere,
  quitRivals,
  forceQuitRivals,
  toggleCount,
  openPlayground,
  openSettings,
  quit,
};

enum class Tone { plain, good, paused, trouble };

// One row of the menu. `action` is none where nothing can be chosen.
struct MenuRow {
  enum class Kind { status, note, progress, figure, button, entry };
  Kind kind = Kind::entry;
  std::string text{};
  std::string note{};      // under or beside the text, smaller
  std::string symbol{};    // a symbol's name, before the text
  std::string shortcut{};  // as toolkits write it, such as "Ctrl+Q", which means ⌘Q on a Mac
  MenuAction action = MenuAction::none;
  Tone tone = Tone::plain;
  std::optional<bool> isChecked{};   // of a row that is on or off
  std::optional<bool> isUnfolded{};  // of a row with choices under it
  int indent = 0;
  double progress = 0;  // from 0 to 1
  bool isEnabled = true;
  bool operator==(const MenuRow&) const = default;
};

// The rows from top to bottom, in groups with a line between them.
struct MenuContent {
  std::vector<std::vector<MenuRow>> groups;
  bool operator==(const MenuContent&) const = default;
};

MenuContent menuContent(const MenuState& state, bool choicesUnfolded);

// The one sentence on the state, and whether it is a good one.
struct StatusLine {
  std::string text;
  Tone tone = Tone::good;
  bool operator==(const StatusLine&) const = default;
};
StatusLine statusLine(const MenuState& state);

}  // namespace nimbletype
