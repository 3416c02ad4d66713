#include "core/completion/completion_engine.h"

#include <algorithm>
#include <initializer_list>
#include <utility>

#include "core/completion/asking/example_cache.h"
#include "core/prompt/reply_cleaning.h"
#include "text/text.h"

namespace nimbletype {
namespace {

constexpr std::string_view logCategory = "engine";
// Text grows on screen at most once a frame, and an answer that is whole by then is drawn just once.
constexpr Milliseconds frame{16};
constexpr Milliseconds caretCatchesUp{40};

// Whole milliseconds; the file may have been edited by hand.
Milliseconds::rep pauseFor(double milliseconds) {
  constexpr double longest = 60'000;
  return static_cast<Milliseconds::rep>(std::clamp(milliseconds, 0.0, longest));
}

}  // namespace

CompletionEngine::CompletionEngine(const Services& services)
    : s_(services),
      alternatives_(services.loop, services.alternatives),
      emoji_(services.loop, services.prefs, services.emoji, services.emojiPicker),
      requests_(
          {services.loop, services.prefs, services.hub, services.context, services.memory, services.power}),
      generation_(services.loop),
      warmUp_(services.loop, services.hub, services.prefs),
      display_({services.ghost, services.prefs, services.screens, services.metrics, services.log}) {
  observations_.push_back(s_.rules.observe([this] { reconsider(); }));
  const std::initializer_list<AnySetting*> settings = {
      &s_.prefs.isEnabled,          &s_.prefs.enabledByDefault,
      &s_.prefs.codeEditorsEnabled, &s_.prefs.completeInsideText,
      &s_.prefs.ignoreSmallFields,  &s_.prefs.onDemandOnly,
      &s_.prefs.batteryOnDemand,    &s_.prefs.triggerKey,
      &s_.prefs.insertion,          &s_.prefs.length,
      &s_.prefs.emojiEnabled,       &s_.prefs.emoticons};
  for (AnySetting* setting : settings) observations_.push_back(setting->observe([this] { reconsider(); }));
  observations_.push_back(s_.power.observe([this] { reconsider(); }));
  s_.typo.onFound([this] { correctionFound(); });
  session_.onLeft([this](const LeftField& field) {
    if (mayRemember(field, s_.prefs, s_.rules))
      s_.memory.remember(field.text(), field.ruleKey, s_.loop.wallNow());
  });
  emoji_.onChanged([this] {
    if (emoji_.canChoose()) setStatus({Status::Case::showing, {}});
    if (shownChanged_) shownChanged_();
  });
  emoji_.onEnded([this] { process(); });
}

// --- what happens to the field ---

void CompletionEngine::setSource(FieldSource& source) {
  source_ = &source;
  source_->onChange([this](Change change) {
    if (change != Change::value) s_.context.focusMoved();
    sourceChanged();
  });
}

void CompletionEngine::sourceChanged() {
  if (auto snapshot = source_->snapshot())
    fieldChanged(*snapshot);
  else
    fieldLost(source_->whyNoField().value_or("no app: nothing focused"));
}

void CompletionEngine::fieldChanged(const FieldSnapshot& snapshot) {
  // Applications report one change several times; only a real one counts. What surrounds it may have changed.
  if (!forceNext_ && snapshot_ == snapshot) return reconsider();
  if (!forceNext_) demanded_ = false;
  suppressed_.follow(snapshot);
  snapshot_ = snapshot;
  session_.seen(snapshot);
  requests_.seen(snapshot);
  holdReason_.reset();
  reached(Stage::fieldChanged);
  if (suggestion_ && suggestion_->fieldKey != snapshot.fieldKey) forgetShown();
  warmUp_.fieldEntered(snapshot.fieldKey);
  process();
}

void CompletionEngine::fieldLost(const std::string& reason) {
  snapshot_.reset();
  session_.leave();
  block(reason);
}

// A change that blocks takes effect at once; one that lifts a block starts over where the caret stands.
void CompletionEngine::reconsider() {
  if (!snapshot_) return;
  if (wantsEmoji_) return process();
  const bool wasBlocked = status_.state == Status::Case::blocked;
  if (auto reason = blockedReason())
    block(*reason);
  else if (wasBlocked && !holdReason_)
    process();
  else if (isShowing() && shownChanged_)
    shownChanged_();  // the keys to take may be others now
}

std::optional<std::string> CompletionEngine::blockedReason() {
  return firstGate(*snapshot_, gateState());
}

GateState CompletionEngine::gateState() {
  decision_ = s_.rules.decision(snapshot_->bundleID, snapshot_->appName, snapshot_->domain);
  const Preferences& prefs = s_.prefs;
  // A suggestion that was asked for may be typed over and taken word by word.
  const bool forced = forceNext_ || demanded_ || suggestion_ || alternatives_.isOpen();
  const bool isInsideInsertion =
      suggestion_ && lastInjection_ && caretLagsBehind(*lastInjection_, *snapshot_, s_.loop.now());
  const bool onDemand = prefs.onDemandOnly.get() || (prefs.batteryOnDemand.get() && s_.power.onBattery());
  return {prefs.isEnabled.get(),
          decision_,
          s_.secureInput.isOn(),
          prefs.completeInsideText.get() || isInsideInsertion,
          prefs.ignoreSmallFields.get(),
          onDemand,
          forced,
          prefs.triggerKey.get()};
}

void CompletionEngine::process() {
  const bool ownChange = !forceNext_ && isOwnChange();
  const GateState state = gateState();
  wantsEmoji_ = offerEmoji(ownChange, state);
  if (wantsEmoji_) return;
  if (auto reason = firstGate(*snapshot_, state)) return block(*reason);
  if (alternatives_.fits(*snapshot_)) return;
  const bool hadSuggestion = suggestion_.has_value();
  if (keepInStep(ownChange)) return;
  cancelWork();
  if (hadSuggestion)
    if (auto reason = blockedReason()) return block(*reason);
  if (ownChange || isSuppressed()) return setStatus({});
  const bool offered = offerFix();
  if (holdTypo() || offered) return;
  schedule();
}

void CompletionEngine::block(std::string reason) {
  forceNext_ = false;
  forgetShown();
  cancelWork();
  setStatus(Status::blocked(std::move(reason)));
}

bool CompletionEngine::isOwnChange() const {
  return lastInjection_ && nimbletype::isOwnChange(*lastInjection_, *snapshot_, s_.loop.now());
}

bool CompletionEngine::isSuppressed() const {
  return !forceNext_ && suppressed_.holds(*snapshot_);
}

// Whether the suggestion on screen still fits and no more is to be done for this change.
bool CompletionEngine::keepInStep(bool ownChange) {
  if (!suggestion_) {
    forgetShown();
    return false;
  }
  const auto typed = typedOver(*suggestion_, snapshot_->before);
  if (!typed) {
    const std::size_t left = text::characterCount(suggestion_->remaining());
    s_.log.log(logCategory, "suggestion dropped: the text went another way (" + std::to_string(left) +
                                " chars were left)");
    forgetShown();
    return false;
  }
  // Our own insertion only grows; whatever else happens, what the field shows is what has been taken.
  if (!ownChange || *typed < suggestion_->consumed) suggestion_->taken = *typed;
  const bool wasHidden = suggestion_->remaining().empty();
  suggestion_->consumed = *typed;
  if (*typed == suggestion_->length()) return awaitGrowth();
  if (!presentRemaining()) return true;
  if (wasHidden && shownChanged_) shownChanged_();
  setStatus({Status::Case::showing, {}});
  return true;
}

// Everything written so far has been typed or taken. Whether more is to come.
bool CompletionEngine::awaitGrowth() {
  if (!asked_) {
    forgetShown();
    return false;
  }
  display_.hideForNow();
  if (shownChanged_) shownChanged_();
  setStatus({Status::Case::thinking, {}});
  return true;
}

// --- asking for a suggestion ---

// Whether what stands before the caret asks for an emoji; nothing else is offered then.
bool CompletionEngine::offerEmoji(bool ownChange, const GateState& state) {
  const bool quiet = ownChange || forceNext_ || isSuppressed() || alternatives_.fits(*snapshot_) ||
                     emojiGate(*snapshot_, state);
  if (quiet) return emoji_.hide(), false;
  if (offerEmoticon()) return true;
  if (!emoji_.follow(*snapshot_, s_.screens.mainHeight())) return false;
  forgetSuggestion();
  cancelWork();
  if (!emoji_.canChoose()) setStatus({});
  return true;
}

bool CompletionEngine::offerEmoticon() {
  const auto swap = emoticonSwap(*snapshot_, s_.prefs);
  if (!swap) return false;
  if (wantsEmoji_ && pendingFix_ && pendingFix_->before == snapshot_->before) return true;
  forgetShown();
  if (!offer({snapshot_->before, swap->replaced, swap->emoji})) return false;
  cancelWork();
  return true;
}

bool CompletionEngine::offerFix() {
  if (!s_.prefs.suggestFixes.get() || forceNext_) return false;
  const auto fix = s_.typo.fix(snapshot_->before);
  return fix && offer({snapshot_->before, fix->word, fix->correction});
}

bool CompletionEngine::offer(Fix fix) {
  if (!display_.showFix(*snapshot_, fix.replacement)) return false;
  pendingFix_ = std::move(fix);
  if (shownChanged_) shownChanged_();
  setStatus({Status::Case::showing, {}});
  return true;
}

// Looking a correction up takes longer than a key press may; it is offered if the word still waits for it.
void CompletionEngine::correctionFound() {
  if (!snapshot_ || isShowing() || blockedReason() || isOwnChange() || isSuppressed()) return;
  if (offerFix()) cancelWork();
}

bool CompletionEngine::holdTypo() {
  if (!s_.prefs.hideOnTypo.get() || forceNext_) return false;
  const auto word = s_.typo.misspelledWord(snapshot_->before);
  if (!word) return false;
  s_.log.log(logCategory, "held: the word being typed looks misspelled (" +
                              std::to_string(text::characterCount(*word)) + " letters)");
  holdReason_ = "This word looks misspelled";
  setStatus(Status::blocked(*holdReason_));
  return true;
}

void CompletionEngine::schedule() {
  const Milliseconds pause{forceNext_ ? 0 : pauseFor(s_.prefs.delayMilliseconds.get())};
  demanded_ = forceNext_;
  forceNext_ = false;
  setStatus({Status::Case::waiting, {}});
  pending_ = s_.loop.after(pause, [this] { generate(); });
}

void CompletionEngine::generate() {
  setStatus({Status::Case::thinking, {}});
  auto asking = question();
  if (!asking) return;
  const auto& [provider, request, words] = *asking;
  asked_ = Asked{*snapshot_, words, provider.promptStyle(), {}};
  streaming_ = provider.streams();
  last_.prompt = asked_->style == PromptStyle::raw ? request.rawPrompt : request.prompt;
  warmUp_.requested();
  reached(Stage::requested);
  generation_.start(
      provider, request, [this](const std::string& text) { grown(text); },
      [this](Generation::Outcome outcome) { finishGeneration(std::move(outcome)); });
}

std::optional<Question> CompletionEngine::question() {
  auto asking = requests_.question(*snapshot_, decision_.length);
  if (!asking) setStatus(Status::failed("This engine isn't part of this version of Nimbletype"));
  return asking;
}

void CompletionEngine::grown(const std::string& textSoFar) {
  if (!asked_) return;
  if (asked_->text.empty()) reached(Stage::firstText);
  asked_->text = textSoFar;
  if (std::exchange(asked_->drawingSoon, true)) return;
  growth_ = s_.loop.after(frame, [this] { showGrowth(); });
}

void CompletionEngine::showGrowth() {
  asked_->drawingSoon = false;
  std::string words(completeWords(cleaned(asked_->text)));
  if (!words.empty()) adopt(std::move(words));
}

// An engine that fails or takes too long half-way leaves what it has written.
void CompletionEngine::finishGeneration(Generation::Outcome outcome) {
  growth_.cancel();
  if (outcome.result) {
    last_.latency = outcome.took;
    last_.output = outcome.result->text;
    last_.cost = outcome.result->cost;
    adopt(cleaned(outcome.result->text));
  } else if (!suggestion_) {
    setStatus(Status::failed(outcome.result.error().message));
  }
  asked_.reset();
  settle();
}

std::string CompletionEngine::cleaned(const std::string& reply) const {
  return cleanReply(reply, {asked_->snapshot.before, asked_->words, asked_->style, {}});
}

// Makes the text of the running request the suggestion, or the one on screen longer.
void CompletionEngine::adopt(std::string text) {
  if (suggestion_) {
    auto longer = continued(*suggestion_, std::move(text));
    if (!longer || longer->text == suggestion_->text) return;
    if (longer->text.empty()) return forgetShown();
    suggestion_ = std::move(longer);
    return showLonger();
  }
  if (!text.empty()) recordArrival();
  const bool fits = snapshot_ && snapshot_->fieldKey == asked_->snapshot.fieldKey &&
                    snapshot_->before == asked_->snapshot.before;
  if (fits && !text.empty())
    showSuggestion(makeSuggestion(std::move(text), snapshot_->before, snapshot_->fieldKey));
}

// What counts is the wait until there is something to read.
void CompletionEngine::recordArrival() {
  if (!std::exchange(asked_->arrived, true)) s_.stats.recordLatency(generation_.took());
}

// After the last text of a request: one that was typed out meanwhile makes room for the next.
void CompletionEngine::settle() {
  if (status_.state == Status::Case::failed || isShowing()) return;
  const bool typedOut = suggestion_ && suggestion_->consumed == suggestion_->length();
  if (!typedOut) return setStatus({});
  forgetShown();
  if (isOwnChange()) return setStatus({});
  schedule();
}

// --- showing it ---

void CompletionEngine::showSuggestion(Suggestion suggestion) {
  suggestion_ = std::move(suggestion);
  display_.begin(decision_.tabAccepts);
  if (!presentRemaining()) return;
  s_.stats.recordShown(s_.loop.wallNow());
  display_.countHint();
  lastSuggestion_ = suggestion_->text;
  if (shownChanged_) shownChanged_();
  setStatus({Status::Case::showing, {}});
}

void CompletionEngine::showLonger() {
  lastSuggestion_ = suggestion_->text;
  if (suggestion_->remaining().empty() || !presentRemaining()) return;
  if (shownChanged_) shownChanged_();
  setStatus({Status::Case::showing, {}});
}

bool CompletionEngine::presentRemaining() {
  if (!display_.show(*snapshot_, std::string(suggestion_->remaining()), decision_.tabAccepts)) {
    forgetShown();
    setStatus(Status::noCaret());
    return false;
  }
  if (display_.lagSuspect()) checkLag();
  reached(Stage::shown);
  return true;
}

// The application moves its caret a little after it has told of the text, or has had a reason not to.
void CompletionEngine::checkLag() {
  lagCheck_ = s_.loop.after(caretCatchesUp, [this] {
    const auto snapshot = source_ ? source_->snapshot() : std::nullopt;
    if (!snapshot || !isShowing() || pendingFix_) return;
    if (snapshot_ != *snapshot) return fieldChanged(*snapshot);
    display_.believeCaret();
  });
}

void CompletionEngine::forgetShown() {
  wantsEmoji_ = false;
  emoji_.hide();
  forgetSuggestion();
}

// All but the emoji picker.
void CompletionEngine::forgetSuggestion() {
  const bool wasShowing = suggestion_ || pendingFix_ || alternatives_.isOpen();
  suggestion_.reset();
  pendingFix_.reset();
  alternatives_.close();
  if (!wasShowing) return;
  lagCheck_.cancel();
  display_.hide();
  if (shownChanged_) shownChanged_();
}

void CompletionEngine::cancelWork() {
  pending_.cancel();
  growth_.cancel();
  asked_.reset();
  generation_.cancel();
}

void CompletionEngine::dismiss() {
  forceNext_ = false;
  wantsEmoji_ = false;
  emoji_.dismiss();
  forgetSuggestion();
  cancelWork();
  if (status_.state != Status::Case::blocked) setStatus({});
}

void CompletionEngine::setStatus(Status status) {
  if (status_ == status) return;
  status_ = std::move(status);
  if (statusChanged_) statusChanged_(status_);
}

void CompletionEngine::reached(Stage stage) const {
  if (stageReached_) stageReached_(stage);
}

}  // namespace nimbletype
