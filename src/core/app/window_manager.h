#pragma once
#include <string>

namespace nimbletype {

class MenuPanel;

// Opens the application's windows; each comes to the front when it is open already. Main thread only.
class WindowManager {
 public:
  virtual ~WindowManager() = default;
  virtual MenuPanel& menuPanel() = 0;
  // On this pane, or on the one shown last where none is named or there is none of that name.
  virtual void openSettings(const std::string& pane) = 0;
  virtual void openPlayground() = 0;
  virtual void playIntro() = 0;
  virtual void openRivalPrompt() = 0;
  virtual void openHiddenIconPrompt() = 0;
  virtual void closeHiddenIconPrompt() = 0;
  // Tells the user of something that went well, once, in passing.
  virtual void tell(const std::string& title, const std::string& message) = 0;
  virtual void closeAll() = 0;
};

}  // namespace nimbletype
