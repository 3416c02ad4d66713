#pragma once
#include <functional>
#include <optional>

#include "core/completion/asking/request_maker.h"
#include "core/completion/deciding/demand.h"
#include "core/completion/deciding/escape_suppression.h"
#include "core/completion/deciding/gate_keeper.h"
#include "core/completion/deciding/status.h"
#include "core/completion/offers/hand.h"
#include "core/completion/offers/offer.h"
#include "personal/stats/stats_store.h"

namespace nimbletype {

// The keys and the commands behind them. A command tells whether its key was consumed: one that can do
// nothing where the caret is leaves it to the application.
class Commands {
 public:
  struct Services {
    const MainLoop& loop;
    const Preferences& prefs;
    AppRules& rules;
    const Screens& screens;
    StatsStore& stats;
    SystemLog& log;
    GateKeeper& gates;
    Demand& demand;
    EscapeSuppression& suppressed;
    Offer& offer;
    Hand& hand;
    const Observable<std::optional<FieldSnapshot>>& snapshot;
    Observable<Status>& status;
  };
  // What the commands ask of whoever follows the field.
  struct Follower {
    std::function<void()> lookAgain, cancelWork;
    std::function<void(std::string reason)> block;
    std::function<std::optional<Question>()> question;
  };

  Commands(const Services& services, Follower follower) : s_(services), follower_(std::move(follower)) {}

  bool keyPressed(const KeyPress& press);
  // A click or a scroll moves the text away from under what is shown.
  void pointerPressed();

  bool accept(KeyCommand key);
  bool escape();
  bool suggestNow();
  // Opens the list of other suggestions, or goes to its next row.
  bool showAlternatives();
  // The toggles work where nothing is suggested, too: one must undo a pause with the key that made it.
  bool toggleApp();
  bool toggleGlobal();
  void dismiss();

 private:
  const FieldSnapshot& field() const { return *s_.snapshot.get(); }
  bool hasField() const { return s_.hand.hasSource() && s_.snapshot.get(); }
  bool canAccept(KeyCommand key) const;
  bool escapePressed();
  void othersCame(AlternativesSession::News news, const std::string& why);

  Services s_;
  Follower follower_;
};

}  // namespace nimbletype
