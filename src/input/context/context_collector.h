#pragma once
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/settings/preferences.h"
#include "input/context/clipboard_watch.h"
#include "input/context/context_source.h"
#include "input/context/surroundings_reader.h"
#include "input/context/window_memory.h"
#include "platform/keys/secure_input.h"

namespace nimbletype {

// The person at the keyboard, as the desktop knows them. Empty locale and time zone: the desktop's own.
struct UserIdentity {
  std::string fullName;
  std::string locale;
  std::string timeZone;
};

// The window in front and what is known of it.
struct WindowInFront {
  LookedAt place;
  std::vector<PlacedText> lines, ofField;
  std::optional<MonotonicTime> readAt;
  bool wasPictured = false, isReading = false;
  std::vector<std::vector<PlacedText>> beside;
};

// Gathers what surrounds the field being written in: the text of its window, of windows beside it and of
// those looked at just before, and what was copied. Windows are read in the background when the focus moves,
// and again for a prompt after a while; `gather` hands over what is there by then. Only what the settings
// allow is read or kept, nothing of it is ever written down, and none of it while a password is being typed.
class ContextCollector : public ContextSource {
 public:
  // Focus changes come in bursts.
  static constexpr Milliseconds settle{50};
  static constexpr Milliseconds fresh{5'000}, freshPicture{30'000};

  struct Services {
    MainLoop& loop;
    Accessibility& accessibility;
    Workspace& workspace;
    const Screens& screens;
    const SecureInput& secureInput;
    ScreenReader& screenReader;
    ClipboardText* clipboard = nullptr;  // none where it cannot be told what was copied
  };
  // `mayRead` says whether the windows of an application may be looked into at all.
  ContextCollector(const Services& services, const Preferences& prefs, UserIdentity user,
                   SurroundingsReader::MayRead mayRead);
  ContextCollector(const ContextCollector&) = delete;
  ContextCollector& operator=(const ContextCollector&) = delete;

  PromptContext gather(const FieldSnapshot& snapshot) override;
  void focusMoved() override;
  // Told when more is known than what was gathered last.
  void onChange(std::function<void()> changed) { changed_ = std::move(changed); }

 private:
  struct Wanted {
    bool screen, recent, beside, clipboard;
    bool anyWindow() const { return screen || recent || beside; }
  };
  Wanted wanted() const;
  void settingsChanged();
  void lookAround();
  void leave();
  void enter(LookedAt window);
  void readFocused();
  void readBeside();
  void arrived();
  void forgetWindows();
  bool isStale() const;
  void noticeWindow(const FieldSnapshot& snapshot);
  bool isAbout(const FieldSnapshot& snapshot) const;

  Services s_;
  const Preferences& prefs_;
  UserIdentity user_;
  SurroundingsReader reader_;
  std::optional<ClipboardWatch> clipboard_;
  WindowMemory memory_;
  std::optional<WindowInFront> current_;
  std::function<void()> changed_;
  bool hasMoved_ = true;                                 // since the window in front was looked up
  std::optional<std::optional<std::string>> titleThen_;  // as the first snapshot after that told it
  bool wasGathered_ = false;                             // since something new arrived
  std::vector<Task> observing_;
  Task look_, reading_;
};

}  // namespace nimbletype
