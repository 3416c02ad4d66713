#include <algorithm>
#include <array>

#include "core/completion/completion_engine.h"
#include "core/prompt/reply_cleaning.h"
#include "text/text.h"

// The keys and the commands behind them.
namespace nimbletype {
namespace {

constexpr std::string_view logCategory = "engine";
// An application shows an insertion soon, but not at once.
constexpr std::array readAgainAfter{Milliseconds{30}, Milliseconds{25}, Milliseconds{60}};

const char* yesNo(bool value) {
  return value ? "true" : "false";
}

}  // namespace

std::vector<KeyCombo> CompletionEngine::takeableKeys() const {
  if (emoji_.isShown())
    return pickerKeys(s_.prefs, decision_.tabAccepts, emoji_.canChoose(), emoji_.pickerAcceptsReturn());
  if (!isShowing()) return {};
  std::vector<KeyCombo> keys = shownKeys(s_.prefs, decision_.tabAccepts);
  if (!alternatives_.isOpen()) return keys;
  const auto more = listKeys();
  keys.insert(keys.end(), more.begin(), more.end());
  return keys;
}

bool CompletionEngine::keyPressed(const KeyPress& press) {
  if (const auto step = rowStep(press.combo()); step && alternatives_.isOpen()) {
    alternatives_.moveSelection(*step);
    return true;
  }
  if (emoji_.canChoose()) {
    if (const auto step = rowStep(press.combo())) return emoji_.moveSelection(*step), true;
    if (isPick(press.combo(), s_.prefs, decision_.tabAccepts, emoji_.pickerAcceptsReturn()))
      return takeEmoji();
  }
  switch (commandFor(press, s_.prefs, decision_.tabAccepts)) {
    case KeyCommand::acceptNext:
      return acceptNext();
    case KeyCommand::acceptAll:
      return acceptAll();
    case KeyCommand::escape:
      return isShowing() && escape();
    // A key that is held does these once.
    case KeyCommand::suggestNow:
      if (!press.isRepeat) suggestNow();
      return true;
    case KeyCommand::alternatives:
      if (!press.isRepeat || alternatives_.isOpen()) showAlternatives();
      return true;
    case KeyCommand::toggleApp:
      if (!press.isRepeat) toggleApp();
      return true;
    case KeyCommand::toggleGlobal:
      if (!press.isRepeat) toggleGlobal();
      return true;
    case KeyCommand::none:
      break;
  }
  return false;
}

// A click or a scroll moves the text away from under the ghost.
void CompletionEngine::pointerPressed() {
  if (isShowing()) dismiss();
}

bool CompletionEngine::canAccept(const char* command) const {
  if (suggestion_ && source_ && snapshot_) return true;
  s_.log.log(logCategory, std::string(command) + " skipped: suggestion " + yesNo(suggestion_.has_value()) +
                              ", source " + yesNo(source_) + ", snapshot " + yesNo(snapshot_.has_value()));
  return false;
}

bool CompletionEngine::acceptNext() {
  if (pendingFix_) return takeFix(), true;
  if (alternatives_.isOpen()) return takeAlternative();
  if (!canAccept("accept next")) return false;
  const std::string_view rest = suggestion_->acceptable();
  const std::string chunk(nextChunk(rest, s_.prefs.trailingSpace.get(), s_.prefs.trailingPunctuation.get()));
  if (chunk.empty()) {
    s_.log.log(logCategory, "accept next: empty chunk, " + std::to_string(text::characterCount(rest)) +
                                " chars remaining");
    // What was taken is still on its way into the field, so the key is ours all the same.
    return suggestion_->taken > suggestion_->consumed;
  }
  const std::size_t length = text::characterCount(chunk);
  suggestion_->taken = std::max(suggestion_->taken, suggestion_->consumed) + length;
  const std::string method(rawValue(decision_.insertion));
  insert(chunk);
  recordAccept(chunk);
  s_.log.log(logCategory, "accept next: " + std::to_string(length) + " chars via " + method);
  return true;
}

bool CompletionEngine::acceptAll() {
  if (alternatives_.isOpen()) return takeAlternative();
  if (!canAccept("accept all")) return false;
  const std::string rest(suggestion_->acceptable());
  if (rest.empty()) return suggestion_->taken > suggestion_->consumed;
  forgetShown();
  cancelWork();
  setStatus({});
  insert(rest);
  recordAccept(rest);
  readAgain(0);
  return true;
}

void CompletionEngine::insert(const std::string& text) {
  lastInjection_ = {snapshot_->fieldKey, text, s_.loop.now()};
  source_->insert(text, decision_.insertion);
}

// A suggestion was taken, whole or in part.
void CompletionEngine::recordAccept(const std::string& text) {
  session_.accepted();
  s_.stats.recordAccept(text, appRuleKey(snapshot_->bundleID), s_.loop.wallNow());
}

void CompletionEngine::takeFix() {
  const Fix fix = *pendingFix_;
  forgetShown();
  setStatus({});
  swapIn(fix);
}

void CompletionEngine::swapIn(const Fix& fix) {
  if (!source_ || snapshot_->before != fix.before) return;
  if (!fix.word.empty()) source_->deleteBackwards(static_cast<int>(text::characterCount(fix.word)));
  insert(fix.replacement);
}

bool CompletionEngine::takeEmoji() {
  const auto swap = emoji_.choice();
  if (!swap) return false;
  forgetShown();
  setStatus({});
  swapIn({snapshot_->before, swap->replaced, swap->emoji});
  return true;
}

void CompletionEngine::showAlternatives() {
  if (alternatives_.isOpen()) return alternatives_.moveSelection(1);
  if (!snapshot_ || !source_) return;
  // Whoever asks for them wants them, also where suggestions come on demand only.
  forceNext_ = true;
  const auto reason = blockedReason();
  forceNext_ = false;
  if (reason) return block(*reason);
  forgetShown();
  cancelWork();
  if (!snapshot_->caretRect) return setStatus(Status::noCaret());
  auto asking = question();
  if (!asking) return;
  const auto clean = [before = snapshot_->before, words = asking->words,
                      style = asking->provider.promptStyle()](const std::string& reply) {
    return cleanReply(reply, {before, words, style, {}});
  };
  setStatus({Status::Case::thinking, {}});
  alternatives_.open(
      {asking->provider, std::move(asking->request), *snapshot_,
       flipped(*snapshot_->caretRect, s_.screens.mainHeight()), clean},
      [this](AlternativesSession::News news, const std::string& why) { othersCame(news, why); });
  if (shownChanged_) shownChanged_();
}

// However many rows it gets, a list counts as one suggestion shown.
void CompletionEngine::othersCame(AlternativesSession::News news, const std::string& why) {
  if (news == AlternativesSession::News::none) return setStatus(Status::failed(why));
  if (news == AlternativesSession::News::first) s_.stats.recordShown(s_.loop.wallNow());
  setStatus({Status::Case::showing, {}});
}

// The key is ours also while there is nothing to choose from yet.
bool CompletionEngine::takeAlternative() {
  const AlternativeChoice choice = alternatives_.choice();
  if (choice.text.empty()) return true;
  forgetShown();
  setStatus({});
  swapIn({snapshot_->before, choice.replaced, choice.text});
  recordAccept(choice.text.substr(choice.replaced.size()));
  readAgain(0);
  return true;
}

void CompletionEngine::readAgain(std::size_t attempt) {
  if (attempt >= readAgainAfter.size()) return;
  readAgain_ = s_.loop.after(readAgainAfter[attempt], [this, attempt] {
    if (auto snapshot = source_->snapshot())
      fieldChanged(*snapshot);
    else
      readAgain(attempt + 1);
  });
}

bool CompletionEngine::escape() {
  if (!snapshot_) return false;
  const EscapeBehavior behavior = s_.prefs.escapeBehavior.get();
  suppressed_.escaped(behavior, *snapshot_);
  dismiss();
  return behavior != EscapeBehavior::passThrough;
}

void CompletionEngine::suggestNow() {
  suppressed_.clear();
  forgetShown();
  cancelWork();
  if (!source_) return;
  forceNext_ = true;
  sourceChanged();
}

void CompletionEngine::toggleApp() {
  if (!snapshot_) return;
  const std::string key = appRuleKey(snapshot_->bundleID), name = snapshot_->appName;
  s_.rules.togglePause(key);
  s_.rules.setName(key, name);
}

void CompletionEngine::toggleGlobal() {
  s_.rules.togglePauseEverywhere();
}

}  // namespace nimbletype
