#pragma once
#include <string>
#include <vector>

#include "menubar/rival_watcher.h"

namespace nimbletype {

// What the rival prompt says, for the rivals it was opened for or that have come since.
struct RivalPromptText {
  enum class Button { none, quit, forceQuit };  // the chief one; none while they quit and once they have
  std::string title, body;
  Button button = Button::quit;
  std::string buttonText;
  bool isDone = false;  // they have quit
  bool operator==(const RivalPromptText&) const = default;
};
RivalPromptText rivalPromptText(const std::vector<std::string>& names, QuitState state, bool haveQuit,
                                bool onMac);
std::string nextTimeText();

// What the prompt for a hidden icon says. `organiser` is the name of a menu-bar organiser that runs; empty
// where there is none.
struct HiddenIconText {
  std::string title, body, wayIn;
  bool operator==(const HiddenIconText&) const = default;
};
HiddenIconText hiddenIconText(const std::string& organiser, bool onMac);

}  // namespace nimbletype
