#pragma once
#include <functional>
#include <string>

#include "windows/kit/prompt_window.h"

namespace nimbletype {

// Tells that the icon in the menu bar cannot be seen, and why as far as that is known.
class HiddenIconPrompt final : public PromptWindow {
 public:
  struct Ways {
    std::function<void()> openSystemSettings;  // empty where there is no page for it
    std::function<void()> openSettings;
    std::function<void()> remindNoMore;
  };
  explicit HiddenIconPrompt(const Ways& ways);
  // The name of the organiser that runs, if any.
  void blame(const std::string& organiser);

 private:
  QLabel* wayIn_;
};

}  // namespace nimbletype
