#include "core/completion/offers/emoji_offer.h"

#include <algorithm>
#include <utility>

#include "core/rules/built_in_lists.h"
#include "text/text.h"

namespace nimbletype {
namespace {

// Long texts are read from further down as they grow; their end stays the same.
constexpr std::size_t placeLength = 40;

bool hasLetter(std::string_view word) {
  return std::ranges::any_of(text::characters(word), text::isLetter);
}

// In code and in commands a colon after a blank is mostly just that.
bool isProse(const FieldSnapshot& snapshot) {
  return !isCodeEditor(snapshot.bundleID) && !isOffByDefault(snapshot.bundleID);
}

// The offer is drawn where text after the caret would stand.
bool hasRoom(const FieldSnapshot& snapshot, const Preferences& prefs) {
  return prefs.completeInsideText.get() || text::isBlank(snapshot.restOfLine());
}

std::vector<EmojiItem> firstOnes(std::vector<EmojiItem> items, std::size_t count) {
  if (items.size() > count) items.resize(count);
  return items;
}

}  // namespace

std::optional<EmojiSwap> emoticonSwap(const FieldSnapshot& snapshot, const Preferences& prefs) {
  if (!prefs.emoticons.get() || !isProse(snapshot) || !hasRoom(snapshot, prefs)) return std::nullopt;
  const auto candidate = emoticonCandidate(snapshot.before);
  if (!candidate) return std::nullopt;
  const std::vector<std::string> emoji = EmojiIndex::emoticon(*candidate);
  if (emoji.empty()) return std::nullopt;
  return EmojiSwap{std::string(*candidate), emoji.front()};
}

bool EmojiOffer::follow(const FieldSnapshot& snapshot, double mainScreenHeight) {
  const auto word = colonWord(snapshot.before);
  if (!word || !prefs_.emojiEnabled.get() || !snapshot.caretRect) return close(), false;
  const std::string_view before(snapshot.before);
  const Place place{
      snapshot.fieldKey,
      std::string(text::lastCharacters(before.substr(0, before.size() - word->text.size()), placeLength))};
  if (place_ != place) close();
  place_ = place;
  if (isDismissed_) return hide(), false;
  const BottomLeftRect caret = flipped(*snapshot.caretRect, mainScreenHeight);
  const bool prose = isProse(snapshot);
  returnPicks_ = prose && !word->word.empty();
  if (word->word.empty()) return prose && offerFrequent(caret);

  appearing_.cancel();
  isWaiting_ = false;
  const std::string replacing(word->text);
  if (auto items = found(*word); !items.empty()) {
    show(std::move(items), replacing, caret);
    return true;
  }
  if (word->closed || hasSaidNone_ || !prose || !hasLetter(word->word)) return hide(), false;
  sayNothingMatches(replacing, caret);
  return true;
}

// A word that is closed names the emoji whole.
std::vector<EmojiItem> EmojiOffer::found(const ColonWord& word) {
  std::vector<EmojiItem> items;
  for (const auto& [item, score] : index_.matches(word.word)) {
    if (items.size() == EmojiPickerModel::screenful || (word.closed && score < EmojiIndex::exact)) break;
    items.push_back(*item);
  }
  return firstOnes(inTone(items, prefs_.skinTone.get(), prefs_.includeNeutralTone.get()),
                   EmojiPickerModel::screenful);
}

bool EmojiOffer::offerFrequent(const BottomLeftRect& caret) {
  ending_.cancel();
  const auto appear = [this, caret] {
    isWaiting_ = false;
    show(firstOnes(inTone(index_.frequent(), prefs_.skinTone.get(), prefs_.includeNeutralTone.get()),
                   EmojiPickerModel::screenful),
         ":", caret);
  };
  if (isShown())
    appear();
  else if (!std::exchange(isWaiting_, true))
    appearing_ = loop_.after(bareColonPause, appear);
  return true;
}

// For a while only: a colon may stand there for any other reason.
void EmojiOffer::sayNothingMatches(const std::string& replacing, const BottomLeftRect& caret) {
  const bool isNew = !isShown() || canChoose();
  show({}, replacing, caret);
  if (!isNew) return;
  ending_ = loop_.after(noteTime, [this] {
    hasSaidNone_ = true;
    hide();
    if (ended_) ended_();
  });
}

void EmojiOffer::show(std::vector<EmojiItem> items, const std::string& replacing,
                      const BottomLeftRect& caret) {
  if (!items.empty()) ending_.cancel();
  if (!panel_.model() || panel_.model()->replacing != replacing) moved_ = false;
  panel_.show(std::move(items), replacing, caret);
  if (changed_) changed_();
}

void EmojiOffer::hide() {
  appearing_.cancel();
  ending_.cancel();
  isWaiting_ = moved_ = false;
  if (!isShown()) return;
  panel_.dismiss();
  if (changed_) changed_();
}

void EmojiOffer::close() {
  hide();
  place_.reset();
  isDismissed_ = hasSaidNone_ = false;
}

void EmojiOffer::dismiss() {
  hide();
  isDismissed_ = place_.has_value();
}

void EmojiOffer::moveSelection(int by) {
  if (!canChoose()) return;
  moved_ = true;
  panel_.moveSelection(by);
  if (changed_) changed_();
}

std::optional<EmojiSwap> EmojiOffer::choice() const {
  const auto emoji = panel_.choose();
  if (!emoji) return std::nullopt;
  return EmojiSwap{panel_.model()->replacing, *emoji};
}

}  // namespace nimbletype
