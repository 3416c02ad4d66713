#include "core/completion/commands.h"

#include <utility>

#include "text/text.h"

namespace nimbletype {
namespace {

constexpr std::string_view logCategory = "engine";

const char* yesNo(bool value) {
  return value ? "true" : "false";
}

}  // namespace

bool Commands::keyPressed(const KeyPress& press) {
  const KeyCommand command = commandFor(press, s_.prefs, s_.offer.keyContext());
  switch (command) {
    case KeyCommand::acceptNext:
    case KeyCommand::acceptAll:
    case KeyCommand::pick:
      return accept(command);
    case KeyCommand::rowUp:
      return s_.offer.moveRow(-1);
    case KeyCommand::rowDown:
      return s_.offer.moveRow(1);
    case KeyCommand::escape:
      return escapePressed();
    // A key that is held does these once.
    case KeyCommand::suggestNow:
      return press.isRepeat || suggestNow();
    case KeyCommand::alternatives:
      return (press.isRepeat && !s_.offer.isListOpen()) || showAlternatives();
    case KeyCommand::toggleApp:
      return press.isRepeat || toggleApp();
    case KeyCommand::toggleGlobal:
      return press.isRepeat || toggleGlobal();
    case KeyCommand::none:
      break;
  }
  return false;
}

void Commands::pointerPressed() {
  if (s_.offer.isShowing()) dismiss();
}

bool Commands::canAccept(KeyCommand key) const {
  if (s_.offer.hasSuggestion() && hasField()) return true;
  s_.log.log(logCategory, std::string(key == KeyCommand::acceptAll ? "accept all" : "accept next") +
                              " skipped: suggestion " + yesNo(s_.offer.hasSuggestion()) + ", source " +
                              yesNo(s_.hand.hasSource()) + ", snapshot " +
                              yesNo(s_.snapshot.get().has_value()));
  return false;
}

bool Commands::accept(KeyCommand key) {
  const bool isOther = s_.offer.takesFix(key) || s_.offer.isListOpen() || key == KeyCommand::pick;
  if (isOther ? !hasField() : !canAccept(key)) return false;
  const Offer::Answer answer = s_.offer.take(key, field());
  if (!answer.taken) return answer.used;
  if (!s_.offer.hasSuggestion()) {
    follower_.cancelWork();
    s_.status.set({});
  }
  const InsertionMethod method = s_.gates.decision().get().insertion;
  s_.hand.put(*answer.taken, field(), method);
  if (key == KeyCommand::acceptNext && !isOther)
    s_.log.log(logCategory, "accept next: " + std::to_string(text::characterCount(answer.taken->counted)) +
                                " chars via " + std::string(rawValue(method)));
  return true;
}

// Without anything to be seen, Escape is the application's as well.
bool Commands::escapePressed() {
  const bool isShowing = s_.offer.isShowing();
  const Status::Case state = s_.status.get().state;
  const bool isUnderWay = state == Status::Case::waiting || state == Status::Case::thinking;
  return (isShowing || isUnderWay) && escape() && isShowing;
}

bool Commands::escape() {
  if (!s_.snapshot.get()) return false;
  const EscapeBehavior behavior = s_.prefs.escapeBehavior.get();
  s_.suppressed.escaped(behavior, field());
  dismiss();
  return behavior != EscapeBehavior::passThrough;
}

void Commands::dismiss() {
  s_.demand.drop();
  s_.offer.dismiss();
  follower_.cancelWork();
  if (s_.status.get().state != Status::Case::blocked) s_.status.set({});
}

bool Commands::suggestNow() {
  s_.suppressed.clear();
  s_.offer.hide();
  follower_.cancelWork();
  if (!s_.hand.hasSource()) return false;
  s_.demand.ask();
  follower_.lookAgain();
  return s_.status.get().state != Status::Case::blocked;
}

// Whoever asks for them wants them, also where suggestions come on demand only.
bool Commands::showAlternatives() {
  if (s_.offer.isListOpen()) return s_.offer.moveRow(1);
  if (!hasField()) return false;
  const bool isCaretLate = s_.offer.hasSuggestion() && s_.hand.isCaretLate(field());
  const auto reason = s_.gates.firstGate(field(), {.forced = true, .insideInsertion = isCaretLate});
  if (reason) return follower_.block(*reason), false;
  s_.offer.hide();
  follower_.cancelWork();
  if (!field().caretRect) return s_.status.set(Status::noCaret()), false;
  auto asking = follower_.question();
  if (!asking) return false;
  s_.status.set({Status::Case::thinking, {}});
  s_.offer.openList(
      {asking->provider, std::move(asking->request), field(),
       flipped(*field().caretRect, s_.screens.mainHeight()), std::move(asking->clean)},
      [this](AlternativesSession::News news, const std::string& why) { othersCame(news, why); });
  return true;
}

// However many rows it gets, a list counts as one suggestion shown.
void Commands::othersCame(AlternativesSession::News news, const std::string& why) {
  if (news == AlternativesSession::News::none) return void(s_.status.set(Status::failed(why)));
  if (news == AlternativesSession::News::first) s_.stats.recordShown(s_.loop.wallNow());
  s_.status.set({Status::Case::showing, {}});
}

bool Commands::toggleApp() {
  if (!s_.snapshot.get()) return false;
  s_.rules.togglePause(appRuleKey(field().bundleID), field().appName);
  return true;
}

bool Commands::toggleGlobal() {
  s_.rules.togglePauseEverywhere();
  return true;
}

}  // namespace nimbletype
