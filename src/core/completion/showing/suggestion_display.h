#pragma once
#include <string>

#include "core/completion/showing/ghost_advance.h"
#include "core/settings/preferences.h"
#include "input/field/field_snapshot.h"
#include "platform/desktop/screens.h"
#include "platform/system/system_log.h"

namespace nimbletype {

// Shows suggestions and fixes as the ghost at the caret: in their place while they are typed over, and with
// the key hint for those who are new to it.
class SuggestionDisplay {
 public:
  struct Services {
    GhostPresenter& ghost;
    Preferences& prefs;
    const Screens& screens;
    const FontMetrics& metrics;
    SystemLog& log;
  };

  explicit SuggestionDisplay(const Services& services) : s_(services), advance_(services.metrics) {}

  // A new suggestion is going to be shown: whether with the key hint is decided once for all of it.
  void begin(bool tabAccepts);
  // What is left of it, where the caret is now; false when the application does not tell where.
  bool show(const FieldSnapshot& snapshot, std::string rest, bool tabAccepts);
  bool showFix(const FieldSnapshot& snapshot, std::string replacement);
  // The suggestion was seen with its hint, if it had one.
  void countHint();
  void hide();
  // Nothing to be seen for now, of a suggestion that goes on.
  void hideForNow() { s_.ghost.hide(); }

  // The caret reported last stood still while the text grew: worth asking again a little later.
  bool lagSuspect() const { return advance_.lagSuspect(); }
  // It has been asked again and still stands there.
  void believeCaret() { s_.ghost.present(advance_.believed()); }

 private:
  Services s_;
  GhostAdvance advance_;
  bool hint_ = false;
};

}  // namespace nimbletype
