#pragma once
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "core/completion/asking/running_request.h"
#include "core/completion/asking/warm_up.h"
#include "core/completion/commands.h"
#include "core/completion/offers/spelling.h"

namespace nimbletype {

// Turns field changes and key presses into suggestions. Here is the road of a change; the gate keeper tells
// what may be asked, the demand what was asked for by hand, the running request what is being written, the
// offer what stands at the caret, the hand what goes in, and the commands what keys do. Main thread only.
class CompletionEngine {
 public:
  struct Services {
    MainLoop& loop;
    Preferences& prefs;
    AppRules& rules;
    ProviderHub& hub;
    ContextSource& context;
    TypoChecker& typo;
    GhostPresenter& ghost;
    AlternativesPanel& alternatives;
    EmojiIndex& emoji;
    EmojiPickerPanel& emojiPicker;
    const Screens& screens;
    const FontMetrics& metrics;
    const SecureInput& secureInput;
    const PowerMonitor& power;
    StatsStore& stats;
    WritingMemory& memory;
    const Observable<std::string>& rival;  // the name of a rival that runs, or empty
    SystemLog& log;
  };

  explicit CompletionEngine(const Services& services);
  CompletionEngine(const CompletionEngine&) = delete;
  CompletionEngine& operator=(const CompletionEngine&) = delete;

  // Follows this source, which must outlive the engine.
  void setSource(FieldSource& source);
  // The focused field's text, caret or focus changed.
  void fieldChanged(const FieldSnapshot& snapshot);
  // No field can be read any more, for this reason.
  void fieldLost(const std::string& reason);

  // A key press of the tap; true when the engine took it. Never waits on anything.
  bool keyPressed(const KeyPress& press) { return commands_.keyPressed(press); }
  void pointerPressed() { commands_.pointerPressed(); }

  // The commands behind the keys; the boolean tells whether the key was consumed.
  bool acceptNext() { return commands_.accept(KeyCommand::acceptNext); }
  bool acceptAll() { return commands_.accept(KeyCommand::acceptAll); }
  bool escape() { return commands_.escape(); }
  bool suggestNow() { return commands_.suggestNow(); }
  bool showAlternatives() { return commands_.showAlternatives(); }
  bool toggleApp() { return commands_.toggleApp(); }
  bool toggleGlobal() { return commands_.toggleGlobal(); }
  // Hides what is shown and cancels what is under way.
  void dismiss() { commands_.dismiss(); }
  // Another engine was chosen, or another address or model of it.
  void engineChosen() { warmUp_.engineChosen(); }
  // Brings the chosen engine into memory.
  void warmUp() { warmUp_.now(); }
  // What the context source would hand over has changed.
  void contextChanged() { requests_.contextChanged(); }

  const Observable<Status>& status() const { return status_; }
  const Observable<std::optional<FieldSnapshot>>& snapshot() const { return snapshot_; }
  const Observable<RuleDecision>& decision() const { return gates_.decision(); }
  const Observable<std::string>& lastSuggestion() const { return lastSuggestion_; }
  // The stay in the focused field; whoever keeps what was written there listens to it.
  FieldSession& session() { return session_; }
  const RunningRequest::Record& lastGeneration() const { return request_.last(); }
  bool isShowing() const { return offer_.isShowing(); }
  // Whether the engine asked last shows its text while it writes.
  bool streaming() const { return request_.streaming(); }
  // The keys to take right now: none while nothing is shown.
  std::vector<KeyCombo> takeableKeys() const { return offer_.takeableKeys(); }

  // The steps from a key press to a ghost, for measuring.
  enum class Stage { fieldChanged, requested, firstText, shown };
  void onStage(std::function<void(Stage)> reached) { stageReached_ = std::move(reached); }
  // Called after a change of what is shown, or of the keys for it.
  void onShownChanged(std::function<void()> changed) { offer_.onChanged(std::move(changed)); }

 private:
  const FieldSnapshot& field() const { return *snapshot_.get(); }
  void lookAgain();
  void moved();
  void reconsider();
  void process();
  void settle();
  GateKeeper::Occasion occasion() const;
  std::optional<std::string> blockedReason() { return gates_.firstGate(field(), occasion()); }
  void block(std::string reason);
  bool isSuppressed() const { return !demand_.isAsked() && suppressed_.holds(field()); }
  bool offerEmoji(bool own);
  bool offerSpelling();
  void correctionFound();
  void schedule();
  void generate();
  std::optional<Question> question();
  void written(const RunningRequest::Written& text);
  void ended(const std::expected<RunningRequest::Written, ProviderError>& result);
  // What a step of the offer says of the status; whether the road of a change ends with it.
  bool follow(Offer::Step step);
  void checkLag();
  void cancelWork() {
    pending_.cancel();
    request_.cancel();
  }
  void reached(Stage stage) const {
    if (stageReached_) stageReached_(stage);
  }

  Services s_;
  FieldSource* source_ = nullptr;
  Observable<Status> status_;
  Observable<std::optional<FieldSnapshot>> snapshot_;
  Observable<std::string> lastSuggestion_;
  FieldSession session_;
  GateKeeper gates_;
  Demand demand_;
  EscapeSuppression suppressed_;
  std::optional<std::string> holdReason_;  // why nothing is asked for although no gate forbids it
  RequestMaker requests_;
  RunningRequest request_;
  Offer offer_;
  Hand hand_;
  Spelling spelling_;
  Commands commands_;
  WarmUp warmUp_;
  Task pending_, lagCheck_;
  std::vector<Task> observations_;
  std::function<void(Stage)> stageReached_;
};

}  // namespace nimbletype
