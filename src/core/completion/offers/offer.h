#pragma once
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "core/completion/deciding/key_commands.h"
#include "core/completion/offers/alternatives_session.h"
#include "core/completion/offers/emoji_offer.h"
#include "core/completion/offers/hand.h"
#include "core/completion/showing/suggestion.h"
#include "core/completion/showing/suggestion_display.h"
#include "core/rules/rule_decision.h"
#include "platform/system/observable.h"

namespace nimbletype {

// A word to be put right, or an emoticon to be turned into an emoji.
struct Fix {
  std::string before;  // the text before the caret it is offered for
  Swap swap;
};

// What stands at the caret for the user to take: nothing, a suggestion, a fix, emoji or other suggestions,
// one at a time. What shows, which keys act on it, taking and hiding are answered here for all of them.
class Offer {
 public:
  struct Services {
    MainLoop& loop;
    Preferences& prefs;
    const Observable<RuleDecision>& decision;
    GhostPresenter& ghost;
    AlternativesPanel& alternatives;
    EmojiIndex& emoji;
    EmojiPickerPanel& emojiPicker;
    const Screens& screens;
    const FontMetrics& metrics;
    SystemLog& log;
  };
  // What a change of the text did to the suggestion: `typedOut` when nothing of it is left to be seen, and
  // `unplaced`, which ends it, when the application does not tell where the caret is.
  enum class Step { none, kept, typedOut, lost, unplaced };

  explicit Offer(const Services& services);

  // --- what shows ---
  bool isShowing() const;
  std::vector<KeyCombo> takeableKeys() const;
  bool hasSuggestion() const { return suggestion_.has_value(); }
  bool isTypedOut() const { return suggestion_ && suggestion_->remaining().empty(); }
  bool isSuggestionShown() const { return suggestion_ && !isTypedOut(); }
  bool hasFix() const { return fix_.has_value(); }
  bool isListOpen() const { return alternatives_.isOpen(); }
  // The list of other suggestions stands where this field's caret is.
  bool listFits(const FieldSnapshot& snapshot) const { return alternatives_.fits(snapshot); }
  // The text before the caret asks for an emoji, whether one is shown yet or not.
  bool asksForEmoji() const { return asksForEmoji_; }
  bool canChooseEmoji() const { return emoji_.canChoose(); }
  // A key that takes a fix takes nothing else.
  bool takesFix(KeyCommand key) const { return fix_ && key == fixCommand(s_.prefs, tabAccepts()); }
  // What is needed to tell what a key means here.
  KeyContext keyContext() const;

  // The keys may be others now.
  void refreshKeys() const {
    if (isShowing()) changed();
  }

  // --- the suggestion ---
  // The field that has the focus; a suggestion for another one ends.
  void enter(const std::string& fieldKey);
  // Follows the text to the snapshot. `own`: the change is an insertion showing up.
  Step follow(const FieldSnapshot& snapshot, bool own);
  // Makes a growing text the suggestion, or the one shown longer. A text that contradicts what has been taken
  // of it changes nothing.
  Step grow(std::string text, const FieldSnapshot& snapshot);
  // Nothing to be seen until it grows on.
  void hideForNow();
  // Draws what is shown where the caret is now.
  Step move(const FieldSnapshot& snapshot);
  bool lagSuspect() const { return display_.lagSuspect(); }
  void believeCaret();

  // --- the others; each takes the place of what was shown ---
  // False where no key can take it, or the caret is not known.
  bool offerFix(Fix fix, const FieldSnapshot& snapshot);
  // True while an emoji is being asked for, so that nothing else is to be offered.
  bool offerEmoji(const FieldSnapshot& snapshot, bool quiet);
  void openList(AlternativesSession::Order order, AlternativesSession::Told told);

  // --- acting on it ---
  // The row of a list or of the picker. False where none is open.
  bool moveRow(int by);
  // What an accept key, or the key that picks from the picker, does here; `used` is whether the key is ours.
  struct Answer {
    bool used = false;
    std::optional<Taken> taken{};
  };
  Answer take(KeyCommand key, const FieldSnapshot& snapshot);
  void hide();
  // The user wants none of it.
  void dismiss();

  // Called after what is shown, or the keys for it, has changed.
  void onChanged(std::function<void()> changed) { changed_ = std::move(changed); }
  // Called when the picker has come or gone by itself.
  void onEmojiShown(std::function<void()> shown) { emojiShown_ = std::move(shown); }
  void onEmojiEnded(std::function<void()> ended) { emoji_.onEnded(std::move(ended)); }

 private:
  bool tabAccepts() const { return s_.decision.get().tabAccepts; }
  Step begin(std::string text, const FieldSnapshot& snapshot);
  Step present(const FieldSnapshot& snapshot);
  bool offerEmoticon(const FieldSnapshot& snapshot, bool wasAsked);
  void forgetAllButEmoji();
  Answer takeWord();
  Answer takeAll();
  Answer takeFix(const FieldSnapshot& snapshot);
  Answer takeRow();
  Answer takeEmoji();
  void changed() const {
    if (changed_) changed_();
  }

  Services s_;
  SuggestionDisplay display_;
  AlternativesSession alternatives_;
  EmojiOffer emoji_;
  std::optional<Suggestion> suggestion_;
  std::optional<Fix> fix_;
  bool asksForEmoji_ = false;
  std::function<void()> changed_, emojiShown_;
};

}  // namespace nimbletype
