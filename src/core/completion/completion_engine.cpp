#include "core/completion/completion_engine.h"

#include <utility>

#include "core/completion/asking/example_cache.h"
#include "core/completion/asking/request_builder.h"

namespace nimbletype {
namespace {

constexpr Milliseconds caretCatchesUp{40};

const Status showing{Status::Case::showing, {}}, thinking{Status::Case::thinking, {}},
    waiting{Status::Case::waiting, {}};

}  // namespace

CompletionEngine::CompletionEngine(const Services& services)
    : s_(services),
      gates_({s_.prefs, s_.rules, s_.secureInput, s_.power, s_.rival}),
      requests_({s_.loop, s_.prefs, s_.hub, s_.context, s_.memory, s_.power, s_.typo}),
      request_(s_.loop),
      offer_({s_.loop, s_.prefs, gates_.decision(), s_.ghost, s_.alternatives, s_.emoji, s_.emojiPicker,
              s_.screens, s_.metrics, s_.log}),
      hand_({s_.loop, s_.stats, session_}),
      spelling_({s_.prefs, s_.typo, offer_, s_.log}),
      commands_({s_.loop, s_.prefs, s_.rules, s_.screens, s_.stats, s_.log, gates_, demand_, suppressed_,
                 offer_, hand_, snapshot_, status_},
                {[this] { lookAgain(); }, [this] { cancelWork(); },
                 [this](std::string reason) { block(std::move(reason)); }, [this] { return question(); }}),
      warmUp_(s_.loop, s_.hub, s_.prefs),
      observations_(gates_.observe([this] { reconsider(); })) {
  s_.typo.onFound([this] { correctionFound(); });
  session_.onLeft([this](const LeftField& field) {
    if (mayRemember(field, s_.prefs, s_.rules))
      s_.memory.remember(field.text(), field.ruleKey, s_.loop.wallNow());
  });
  request_.onFirstText([this] { reached(Stage::firstText); });
  offer_.onEmojiShown([this] {
    if (offer_.canChooseEmoji()) status_.set(showing);
  });
  offer_.onEmojiEnded([this] { process(); });
}

// --- the road of a change ---

void CompletionEngine::setSource(FieldSource& source) {
  source_ = &source;
  hand_.setSource(source, [this](const FieldSnapshot& snapshot) { fieldChanged(snapshot); });
  source_->onChange([this](Change change) {
    if (change != Change::value) s_.context.focusMoved();
    lookAgain();
  });
}

void CompletionEngine::lookAgain() {
  if (auto snapshot = source_->snapshot())
    fieldChanged(*snapshot);
  else
    fieldLost(source_->whyNoField().value_or("no app: nothing focused"));
}

// Applications report one change several times, and tell of the caret's place apart from the text: only
// another text, selection or field sets out on the road, unless a gate has opened or closed.
void CompletionEngine::fieldChanged(const FieldSnapshot& snapshot) {
  const bool isOld = !demand_.isAsked() && snapshot_.get() && holdsSameText(*snapshot_.get(), snapshot);
  if (!snapshot_.set(snapshot) && isOld) return reconsider();
  session_.seen(snapshot);
  if (isOld) return moved();
  demand_.textChanged();
  suppressed_.follow(snapshot);
  hand_.follow(snapshot);
  requests_.seen(snapshot);
  holdReason_.reset();
  reached(Stage::fieldChanged);
  offer_.enter(snapshot.fieldKey);
  warmUp_.fieldEntered(snapshot.fieldKey);
  process();
}

// What is shown goes along; what is being written goes on.
void CompletionEngine::moved() {
  if (status_.get() == Status::noCaret()) return process();
  reconsider();
  if (status_.get().state != Status::Case::blocked || holdReason_) follow(offer_.move(field()));
}

void CompletionEngine::fieldLost(const std::string& reason) {
  snapshot_.set(std::nullopt);
  session_.leave();
  block(reason);
}

// A change that blocks takes effect at once; one that lifts a block starts over where the caret stands.
void CompletionEngine::reconsider() {
  if (!snapshot_.get()) return;
  if (offer_.asksForEmoji()) return process();
  const bool wasBlocked = status_.get().state == Status::Case::blocked;
  if (auto reason = blockedReason())
    block(*reason);
  else if (wasBlocked && !holdReason_)
    process();
  else
    offer_.refreshKeys();
}

GateKeeper::Occasion CompletionEngine::occasion() const {
  // A suggestion that was asked for may be typed over and taken word by word.
  return {demand_.holds() || offer_.hasSuggestion() || offer_.isListOpen(),
          offer_.hasSuggestion() && hand_.isCaretLate(field())};
}

void CompletionEngine::process() {
  const bool own = !demand_.isAsked() && hand_.isOwn(field());
  if (offerEmoji(own)) return;
  if (auto reason = blockedReason()) return block(*reason);
  if (offer_.listFits(field())) return;
  const bool hadSuggestion = offer_.hasSuggestion();
  if (follow(offer_.follow(field(), own))) return;
  cancelWork();
  if (hadSuggestion)
    if (auto reason = blockedReason()) return block(*reason);
  if (own) return settle();
  if (isSuppressed()) return void(status_.set({}));
  if (!demand_.isAsked() && offerSpelling()) return;
  schedule();
}

void CompletionEngine::block(std::string reason) {
  demand_.drop();
  offer_.hide();
  cancelWork();
  status_.set(Status::blocked(std::move(reason)));
}

// Our own change needs no answer; the user's, made too soon after it, gets its own a little later.
void CompletionEngine::settle() {
  status_.set({});
  if (const auto patience = hand_.patience()) pending_ = s_.loop.after(*patience, [this] { process(); });
}

bool CompletionEngine::follow(Offer::Step step) {
  switch (step) {
    case Offer::Step::none:
    case Offer::Step::lost:
      return false;
    case Offer::Step::kept:
      if (offer_.lagSuspect()) checkLag();
      reached(Stage::shown);
      status_.set(showing);
      return true;
    case Offer::Step::typedOut:
      if (!request_.isRunning()) return offer_.hide(), false;
      offer_.hideForNow();
      status_.set(thinking);
      return true;
    case Offer::Step::unplaced:
      status_.set(Status::noCaret());
      return true;
  }
  return false;
}

// The application moves its caret a little after it has told of the text, or has had a reason not to.
void CompletionEngine::checkLag() {
  lagCheck_ = s_.loop.after(caretCatchesUp, [this] {
    const auto snapshot = source_ ? source_->snapshot() : std::nullopt;
    if (!snapshot || !offer_.isSuggestionShown() || !offer_.lagSuspect()) return;
    if (snapshot_.get() != snapshot) return fieldChanged(*snapshot);
    offer_.believeCaret();
  });
}

bool CompletionEngine::offerEmoji(bool own) {
  const bool quiet = own || demand_.isAsked() || isSuppressed() || offer_.listFits(field()) ||
                     emojiGate(field(), gates_.state(field(), occasion()));
  if (!offer_.offerEmoji(field(), quiet)) return false;
  cancelWork();
  status_.set(offer_.hasFix() || offer_.canChooseEmoji() ? showing : Status());
  return true;
}

// A word that is held stays held while its fix is shown.
bool CompletionEngine::offerSpelling() {
  const bool offered = spelling_.offerFix(field());
  holdReason_ = spelling_.hold(field());
  if (holdReason_) status_.set(Status::blocked(*holdReason_));
  if (offered && !holdReason_) status_.set(showing);
  return offered || holdReason_;
}

// Looking a correction up takes longer than a key press may; it is offered if the word still waits for it.
void CompletionEngine::correctionFound() {
  if (!snapshot_.get() || isShowing() || blockedReason() || hand_.isOwn(field()) || isSuppressed()) return;
  if (demand_.isAsked() || !spelling_.offerFix(field())) return;
  cancelWork();
  if (!holdReason_) status_.set(showing);
}

// --- asking for a suggestion ---

void CompletionEngine::schedule() {
  const Milliseconds pause = demand_.isAsked() ? Milliseconds(0) : pauseFor(s_.prefs.delayMilliseconds.get());
  demand_.schedule();
  status_.set(waiting);
  pending_ = s_.loop.after(pause, [this] { generate(); });
}

void CompletionEngine::generate() {
  status_.set(thinking);
  const auto asking = question();
  if (!asking) return;
  warmUp_.requested();
  reached(Stage::requested);
  request_.start(
      *asking, field(), [this](const RunningRequest::Written& text) { written(text); },
      [this](const auto& result) { ended(result); });
}

std::optional<Question> CompletionEngine::question() {
  auto asking = requests_.question(field(), decision().get().length);
  if (!asking) status_.set(Status::failed("This engine isn't part of this version of Nimbletype"));
  return asking;
}

// Text of the running request becomes the suggestion, or makes the one on screen longer.
void CompletionEngine::written(const RunningRequest::Written& text) {
  // What counts is the wait until there is something to read.
  if (text.isFirst) s_.stats.recordLatency(text.took);
  const bool isNew = !offer_.hasSuggestion();
  const bool fits = text.askedFor.fieldKey == field().fieldKey && text.askedFor.before == field().before;
  if (isNew && !fits) return;
  const Offer::Step step = offer_.grow(text.text, field());
  if (step == Offer::Step::kept && isNew) s_.stats.recordShown(s_.loop.wallNow());
  if (step == Offer::Step::kept || step == Offer::Step::typedOut) lastSuggestion_.set(text.text);
  if (step != Offer::Step::typedOut) follow(step);
}

// An engine that fails or takes too long half-way leaves what it has written. A suggestion that was typed out
// meanwhile makes room for the next.
void CompletionEngine::ended(const std::expected<RunningRequest::Written, ProviderError>& result) {
  if (result)
    written(*result);
  else if (!offer_.hasSuggestion())
    status_.set(Status::failed(result.error().message));
  if (status_.get().state == Status::Case::failed || isShowing()) return;
  if (!offer_.isTypedOut()) return void(status_.set({}));
  offer_.hide();
  process();
}

}  // namespace nimbletype
