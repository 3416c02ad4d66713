#pragma once
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "core/completion/asking/field_session.h"
#include "core/completion/asking/generation.h"
#include "core/completion/asking/request_maker.h"
#include "core/completion/asking/warm_up.h"
#include "core/completion/deciding/escape_suppression.h"
#include "core/completion/deciding/gates.h"
#include "core/completion/deciding/key_commands.h"
#include "core/completion/deciding/own_change.h"
#include "core/completion/deciding/status.h"
#include "core/completion/offers/alternatives_session.h"
#include "core/completion/offers/emoji_offer.h"
#include "core/completion/showing/suggestion.h"
#include "core/completion/showing/suggestion_display.h"
#include "core/rules/app_rules.h"
#include "core/settings/preferences.h"
#include "engines/provider/provider_hub.h"
#include "input/field/field_source.h"
#include "input/monitors/power_monitor.h"
#include "input/monitors/typo_checker.h"
#include "overlay/ghost/ghost_content.h"
#include "personal/stats/stats_store.h"
#include "platform/desktop/screens.h"
#include "platform/drawing/font_metrics.h"
#include "platform/keys/event_tap.h"
#include "platform/keys/secure_input.h"
#include "platform/system/system_log.h"

namespace nimbletype {

// Turns field changes and key presses into suggestions. It conducts: what it decides lies in the pure
// functions beside it. Main thread only.
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
    SystemLog& log;
  };
  // The last generation, for diagnostics: what was asked and answered, and how long it took.
  struct LastGeneration {
    Milliseconds latency{0};
    std::string prompt, output;
    CompletionCost cost;
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
  bool keyPressed(const KeyPress& press);
  void pointerPressed();

  // The commands behind the keys; the boolean tells whether the key was consumed.
  bool acceptNext();
  bool acceptAll();
  bool escape();
  void suggestNow();
  // Opens the list of other suggestions, or goes to its next row.
  void showAlternatives();
  void toggleApp();
  void toggleGlobal();
  // Hides what is shown and cancels what is under way.
  void dismiss();
  // Brings the chosen engine into memory.
  void warmUp() { warmUp_.now(); }
  // What the context source would hand over has changed.
  void contextChanged() { requests_.contextChanged(); }

  const Status& status() const { return status_; }
  const std::optional<FieldSnapshot>& snapshot() const { return snapshot_; }
  const RuleDecision& decision() const { return decision_; }
  const std::string& lastSuggestion() const { return lastSuggestion_; }
  // The stay in the focused field; whoever keeps what was written there listens to it.
  FieldSession& session() { return session_; }
  const LastGeneration& lastGeneration() const { return last_; }
  bool isShowing() const {
    return pendingFix_ || alternatives_.isOpen() || emoji_.isShown() ||
           (suggestion_ && !suggestion_->remaining().empty());
  }
  // Whether the engine asked last shows its text while it writes.
  bool streaming() const { return streaming_; }
  // The keys to take right now: none while nothing is shown.
  std::vector<KeyCombo> takeableKeys() const;

  // The steps from a key press to a ghost, for measuring.
  enum class Stage { fieldChanged, requested, firstText, shown };
  void onStage(std::function<void(Stage)> reached) { stageReached_ = std::move(reached); }

  // Called after a real change of the status, and of what is shown.
  void onStatusChanged(std::function<void(const Status&)> changed) { statusChanged_ = std::move(changed); }
  void onShownChanged(std::function<void()> changed) { shownChanged_ = std::move(changed); }

 private:
  struct Fix {
    std::string before, word, replacement;
  };
  // A request under way: what it was made for, and what has been written so far.
  struct Asked {
    FieldSnapshot snapshot;
    int words = 0;
    PromptStyle style = PromptStyle::raw;
    std::string text;
    bool drawingSoon = false;
    bool arrived = false;  // the first of it is there
  };

  void sourceChanged();
  void reconsider();
  std::optional<std::string> blockedReason();
  GateState gateState();
  void process();
  void block(std::string reason);
  bool isOwnChange() const;
  bool isSuppressed() const;
  bool keepInStep(bool ownChange);
  bool awaitGrowth();
  bool offerEmoji(bool ownChange, const GateState& state);
  bool offerEmoticon();
  bool offerFix();
  bool offer(Fix fix);
  void correctionFound();
  bool holdTypo();
  void schedule();
  void generate();
  std::optional<Question> question();
  void grown(const std::string& textSoFar);
  void showGrowth();
  void finishGeneration(Generation::Outcome outcome);
  std::string cleaned(const std::string& reply) const;
  void adopt(std::string text);
  void settle();
  void showSuggestion(Suggestion suggestion);
  void showLonger();
  bool presentRemaining();
  void checkLag();
  void insert(const std::string& text);
  void recordArrival();
  void recordAccept(const std::string& text);
  void takeFix();
  void swapIn(const Fix& fix);
  bool takeEmoji();
  void othersCame(AlternativesSession::News news, const std::string& why);
  bool takeAlternative();
  void readAgain(std::size_t attempt);
  void forgetShown();
  void forgetSuggestion();
  void cancelWork();
  void setStatus(Status status);
  void reached(Stage stage) const;
  bool canAccept(const char* command) const;

  Services s_;
  FieldSource* source_ = nullptr;
  Status status_;
  std::optional<FieldSnapshot> snapshot_;
  RuleDecision decision_;
  FieldSession session_;
  std::optional<Suggestion> suggestion_;
  std::optional<Fix> pendingFix_;
  AlternativesSession alternatives_;
  EmojiOffer emoji_;
  bool wantsEmoji_ = false;  // the text before the caret asks for one
  std::optional<Injection> lastInjection_;
  EscapeSuppression suppressed_;
  std::optional<std::string> holdReason_;  // why nothing is asked for although no gate forbids it
  bool forceNext_ = false;
  bool demanded_ = false;  // Suggest Now brought about the request for this snapshot
  RequestMaker requests_;
  std::optional<Asked> asked_;
  Generation generation_;
  WarmUp warmUp_;
  SuggestionDisplay display_;
  bool streaming_ = false;
  Task pending_, readAgain_, growth_, lagCheck_;
  std::string lastSuggestion_;
  LastGeneration last_;
  std::vector<Task> observations_;
  std::function<void(const Status&)> statusChanged_;
  std::function<void()> shownChanged_;
  std::function<void(Stage)> stageReached_;
};

}  // namespace nimbletype
