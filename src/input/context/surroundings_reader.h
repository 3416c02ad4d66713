#pragma once
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "input/context/window_text.h"
#include "input/context/window_text_reader.h"
#include "platform/desktop/screens.h"
#include "platform/desktop/workspace.h"

namespace nimbletype {

// A window that is being looked at.
struct LookedAt {
  RunningApp app;
  AXElement window, field;  // the field only when the focused element is one
  std::string title;
  std::optional<TopLeftRect> frame;
  // The same window under another title shows something else: another page, another document.
  std::string key() const;
};

// Finds windows and reads their text, one after another, in the background. Applications that do not answer
// are left alone for a minute.
class SurroundingsReader {
 public:
  static constexpr std::size_t mostBeside = 2;
  static constexpr Milliseconds silence{60'000};

  struct Services {
    MainLoop& loop;
    Accessibility& accessibility;
    Workspace& workspace;
    const Screens& screens;
    ScreenReader& screenReader;
  };
  using MayRead = std::function<bool(const RunningApp&)>;
  SurroundingsReader(const Services& services, MayRead mayRead);

  // The window in front; none when there is none, or it must not be read.
  std::optional<LookedAt> lookedAt();
  bool mayReadFrontmost() const;

  // Both tell in a later turn. Where Accessibility tells nothing, the window's picture is read if that is
  // possible and wanted.
  using Done = std::function<void(WindowReading)>;
  [[nodiscard]] Task readFocused(const LookedAt& window, bool mayUsePicture, Done done);
  using BesideDone = std::function<void(std::vector<std::vector<PlacedText>>)>;
  [[nodiscard]] Task readBeside(const LookedAt& window, BesideDone done);

 private:
  struct Chain;
  bool mayRead(const ScreenWindow& window) const;
  bool isSilent(std::int64_t processID) const;
  void note(std::int64_t processID, const WindowReading& reading);
  std::optional<ScreenWindow> pictured(const LookedAt& window);
  AXElement elementOf(const ScreenWindow& window);
  void readNext(const std::shared_ptr<Chain>& chain);

  Services s_;
  MayRead mayRead_;
  WindowTextReader reader_;
  std::map<std::int64_t, MonotonicTime> silentSince_;
};

}  // namespace nimbletype
