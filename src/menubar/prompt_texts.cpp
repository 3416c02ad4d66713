#include "menubar/prompt_texts.h"

#include "text/format/word_list.h"

namespace nimbletype {
namespace {

const std::string app = "Nimbletype";

std::string whyPaused(const std::vector<std::string>& names, bool onMac) {
  if (names.size() > 1)
    return "These apps answer the Tab key before " + app + ". " + app +
           " stays paused in your other apps until they quit.";
  const std::string who = onMac ? "Both apps answer the Tab key, and macOS gives it to"
                                : "Both apps answer the Tab key, and the desktop gives it to";
  return who + " " + text::wordList(names) + ". " + app + " stays paused in your other apps until it quits.";
}

std::string whyRefused(const std::vector<std::string>& names) {
  return text::wordList(names) +
         (names.size() == 1
              ? " didn't quit. It may be showing a dialog. Force Quit closes it right away."
              : " didn't quit. They may be showing a dialog. Force Quit closes them right away.");
}

}  // namespace

RivalPromptText rivalPromptText(const std::vector<std::string>& names, QuitState state, bool haveQuit,
                                bool onMac) {
  using Button = RivalPromptText::Button;
  const std::string list = text::wordList(names);
  if (haveQuit)
    return {"Suggestions are back", list + " quit, so your suggestions are back in every app.", Button::none,
            "", true};
  const std::string title =
      names.size() == 1 ? "Another autocomplete app is running" : "Other autocomplete apps are running";
  if (state == QuitState::refused) return {title, whyRefused(names), Button::forceQuit, "Force Quit", false};
  if (state == QuitState::quitting)
    return {title, "Waiting for " + list + " to quit…", Button::none, "Quit " + list, false};
  return {title, whyPaused(names, onMac), Button::quit, "Quit " + list, false};
}

std::string nextTimeText() {
  return std::string("Next time, quit") + " other autocomplete apps when they open";
}

HiddenIconText hiddenIconText(const std::string& organiser, bool onMac) {
  HiddenIconText text{.title = "Your menu bar icon is hidden", .body = {}, .wayIn = {}};
  if (!organiser.empty())
    text.body = organiser + " is hiding it. In its settings, set " + app + " to show" + ".";
  else if (onMac)
    text.body = "There's no room for it, or macOS is hiding it. Check Menu Bar in System Settings.";
  else
    text.body = "No panel of this desktop shows it. Add a system tray or notification area to a panel.";
  text.wayIn = onMac ? "Until then, open " + app + " from Applications to reach Settings."
                     : "Until then, start " + app + " once more to reach Settings.";
  return text;
}

}  // namespace nimbletype
