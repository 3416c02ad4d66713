#pragma once
#include <functional>
#include <optional>

#include "core/completion/offers/colon_word.h"
#include "core/settings/preferences.h"
#include "input/field/field_snapshot.h"
#include "overlay/emoji/emoji_picker_panel.h"
#include "platform/system/main_loop.h"

namespace nimbletype {

// An emoji in place of what stands before the caret.
struct EmojiSwap {
  std::string replaced, emoji;
  bool operator==(const EmojiSwap&) const = default;
};

// The emoji a text before the caret asks for by an emoticon; none where emoticons mean other things.
std::optional<EmojiSwap> emoticonSwap(const FieldSnapshot& snapshot, const Preferences& prefs);

// The picker while a colon word is being typed.
class EmojiOffer {
 public:
  // So long does a colon alone wait for a word, or for the rest of an emoticon, before the list comes.
  static constexpr Milliseconds bareColonPause{250};
  // So long does the list say that nothing matches.
  static constexpr Milliseconds noteTime{2000};

  EmojiOffer(MainLoop& loop, const Preferences& prefs, EmojiIndex& index, EmojiPickerPanel& panel)
      : loop_(loop), prefs_(prefs), index_(index), panel_(panel) {}

  // Follows the text to the snapshot's caret. True while an emoji is being asked for there, so that nothing
  // else is to be offered, even if the list is not shown yet. Does not count where there is no caret.
  bool follow(const FieldSnapshot& snapshot, double mainScreenHeight);
  // Takes the list away; the word may bring it back when it goes on.
  void hide();
  // The user wants no emoji in place of this colon word, however it goes on.
  void dismiss();

  bool isShown() const { return panel_.isVisible(); }
  bool canChoose() const { return panel_.canChoose(); }
  // Whether Return picks: not while it may just as well end the line.
  bool pickerAcceptsReturn() const { return canChoose() && (returnPicks_ || moved_); }
  void moveSelection(int by);
  std::optional<EmojiSwap> choice() const;

  // Called after what is shown has changed, and when the offer has ended by itself.
  void onChanged(std::function<void()> changed) { changed_ = std::move(changed); }
  void onEnded(std::function<void()> ended) { ended_ = std::move(ended); }

 private:
  // A colon word is the same one however it goes on.
  struct Place {
    std::string fieldKey, before;
    bool operator==(const Place&) const = default;
  };

  std::vector<EmojiItem> found(const ColonWord& word);
  bool offerFrequent(const BottomLeftRect& caret);
  void sayNothingMatches(const std::string& replacing, const BottomLeftRect& caret);
  void show(std::vector<EmojiItem> items, const std::string& replacing, const BottomLeftRect& caret);
  void close();

  MainLoop& loop_;
  const Preferences& prefs_;
  EmojiIndex& index_;
  EmojiPickerPanel& panel_;
  std::optional<Place> place_;  // of the colon word being typed
  bool isDismissed_ = false, returnPicks_ = false, moved_ = false;
  bool isWaiting_ = false, hasSaidNone_ = false;
  Task appearing_, ending_;
  std::function<void()> changed_, ended_;
};

}  // namespace nimbletype
