#include "core/completion/offers/offer.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "text/text.h"

namespace nimbletype {

Offer::Offer(const Services& services)
    : s_(services),
      display_({services.ghost, services.prefs, services.screens, services.metrics, services.log}),
      alternatives_(services.loop, services.alternatives),
      emoji_(services.loop, services.prefs, services.emoji, services.emojiPicker) {
  emoji_.onChanged([this] {
    if (emojiShown_) emojiShown_();
    changed();
  });
}

// --- what shows ---

bool Offer::isShowing() const {
  return fix_ || alternatives_.isOpen() || emoji_.isShown() || isSuggestionShown();
}

std::vector<KeyCombo> Offer::takeableKeys() const {
  if (emoji_.isShown())
    return pickerKeys(s_.prefs, tabAccepts(), emoji_.canChoose(), emoji_.pickerAcceptsReturn());
  if (!isShowing()) return {};
  if (fix_) return fixKeys(s_.prefs, tabAccepts());
  std::vector<KeyCombo> keys = shownKeys(s_.prefs, tabAccepts());
  if (alternatives_.isOpen()) std::ranges::copy(listKeys(), std::back_inserter(keys));
  return keys;
}

KeyContext Offer::keyContext() const {
  return {.tabAccepts = tabAccepts(),
          .listIsOpen = alternatives_.isOpen(),
          .canChooseEmoji = emoji_.canChoose(),
          .returnPicks = emoji_.pickerAcceptsReturn()};
}

// --- the suggestion ---

void Offer::enter(const std::string& fieldKey) {
  if (suggestion_ && suggestion_->fieldKey != fieldKey) hide();
}

Offer::Step Offer::follow(const FieldSnapshot& snapshot, bool own) {
  if (!suggestion_) {
    hide();
    return Step::none;
  }
  const auto typed = typedOver(*suggestion_, snapshot.before);
  if (!typed) {
    const std::size_t left = text::characterCount(suggestion_->remaining());
    s_.log.log("engine", "suggestion dropped: the text went another way (" + std::to_string(left) +
                             " chars were left)");
    hide();
    return Step::lost;
  }
  // Our own insertion only grows; whatever else happens, what the field shows is what has been taken.
  if (!own || *typed < suggestion_->consumed) suggestion_->taken = *typed;
  const bool wasHidden = isTypedOut();
  suggestion_->consumed = *typed;
  if (isTypedOut()) return Step::typedOut;
  const Step step = present(snapshot);
  if (step == Step::kept && wasHidden) changed();
  return step;
}

Offer::Step Offer::grow(std::string text, const FieldSnapshot& snapshot) {
  if (!suggestion_) return text.empty() ? Step::none : begin(std::move(text), snapshot);
  auto longer = continued(*suggestion_, std::move(text));
  if (!longer || longer->text == suggestion_->text) return Step::none;
  if (longer->text.empty()) return hide(), Step::lost;
  suggestion_ = std::move(longer);
  if (isTypedOut()) return Step::typedOut;
  const Step step = present(snapshot);
  if (step == Step::kept) changed();
  return step;
}

Offer::Step Offer::begin(std::string text, const FieldSnapshot& snapshot) {
  suggestion_ = makeSuggestion(std::move(text), snapshot.before, snapshot.fieldKey);
  display_.begin(tabAccepts());
  const Step step = present(snapshot);
  if (step != Step::kept) return step;
  display_.countHint();
  changed();
  return step;
}

Offer::Step Offer::present(const FieldSnapshot& snapshot) {
  if (display_.show(snapshot, std::string(suggestion_->remaining()), tabAccepts())) return Step::kept;
  hide();
  return Step::unplaced;
}

void Offer::hideForNow() {
  display_.hideForNow();
  changed();
}

Offer::Step Offer::move(const FieldSnapshot& snapshot) {
  if (isSuggestionShown()) return present(snapshot);
  if (fix_ && !display_.showFix(snapshot, fix_->swap.text)) return hide(), Step::unplaced;
  return Step::none;
}

void Offer::believeCaret() {
  if (isSuggestionShown()) display_.believeCaret();
}

// --- the others ---

bool Offer::offerFix(Fix fix, const FieldSnapshot& snapshot) {
  if (!takingKey(s_.prefs, tabAccepts()) || !display_.showFix(snapshot, fix.swap.text)) return false;
  fix_ = std::move(fix);
  changed();
  return true;
}

bool Offer::offerEmoji(const FieldSnapshot& snapshot, bool quiet) {
  const bool wasAsked = std::exchange(asksForEmoji_, false);
  if (quiet) return emoji_.hide(), false;
  if (offerEmoticon(snapshot, wasAsked)) return asksForEmoji_ = true;
  if (!emoji_.follow(snapshot, s_.screens.mainHeight())) return false;
  forgetAllButEmoji();
  return asksForEmoji_ = true;
}

bool Offer::offerEmoticon(const FieldSnapshot& snapshot, bool wasAsked) {
  const auto swap = emoticonSwap(snapshot, s_.prefs);
  if (!swap || !takingKey(s_.prefs, tabAccepts())) return false;
  if (wasAsked && fix_ && fix_->before == snapshot.before) return display_.showFix(snapshot, swap->emoji);
  hide();
  return offerFix({snapshot.before, {swap->replaced, swap->emoji}}, snapshot);
}

void Offer::openList(AlternativesSession::Order order, AlternativesSession::Told told) {
  hide();
  alternatives_.open(std::move(order), std::move(told));
  changed();
}

// --- acting on it ---

bool Offer::moveRow(int by) {
  if (alternatives_.isOpen()) return alternatives_.moveSelection(by), true;
  if (!emoji_.canChoose()) return false;
  emoji_.moveSelection(by);
  return true;
}

Offer::Answer Offer::take(KeyCommand key, const FieldSnapshot& snapshot) {
  if (key == KeyCommand::pick) return takeEmoji();
  if (takesFix(key)) return takeFix(snapshot);
  if (alternatives_.isOpen()) return takeRow();
  if (!suggestion_) return {};
  return key == KeyCommand::acceptAll ? takeAll() : takeWord();
}

// What was taken may still be on its way into the field: then the key is ours, though nothing is left.
Offer::Answer Offer::takeWord() {
  const std::string_view rest = suggestion_->acceptable();
  const std::string chunk(nextChunk(rest, s_.prefs.trailingSpace.get(), s_.prefs.trailingPunctuation.get()));
  if (chunk.empty()) {
    s_.log.log("engine", "accept next: empty chunk, " + std::to_string(text::characterCount(rest)) +
                             " chars remaining");
    return {suggestion_->taken > suggestion_->consumed};
  }
  suggestion_->taken = std::max(suggestion_->taken, suggestion_->consumed) + text::characterCount(chunk);
  return {true, Taken{{{}, chunk}, chunk}};
}

Offer::Answer Offer::takeAll() {
  const std::string rest(suggestion_->acceptable());
  if (rest.empty()) return {suggestion_->taken > suggestion_->consumed};
  hide();
  return {true, Taken{{{}, rest}, rest, true}};
}

Offer::Answer Offer::takeFix(const FieldSnapshot& snapshot) {
  const Fix fix = *fix_;
  hide();
  if (snapshot.before != fix.before) return {true};
  return {true, Taken{fix.swap, {}}};
}

// The key is ours also while there is nothing to choose from yet.
Offer::Answer Offer::takeRow() {
  const AlternativeChoice choice = alternatives_.choice();
  if (choice.text.empty()) return {true};
  hide();
  return {true, Taken{{choice.replaced, choice.text}, choice.text.substr(choice.replaced.size()), true}};
}

Offer::Answer Offer::takeEmoji() {
  const auto swap = emoji_.choice();
  if (!swap) return {};
  hide();
  return {true, Taken{{swap->replaced, swap->emoji}, {}}};
}

void Offer::hide() {
  asksForEmoji_ = false;
  emoji_.hide();
  forgetAllButEmoji();
}

void Offer::dismiss() {
  asksForEmoji_ = false;
  emoji_.dismiss();
  forgetAllButEmoji();
}

void Offer::forgetAllButEmoji() {
  const bool wasShowing = suggestion_ || fix_ || alternatives_.isOpen();
  suggestion_.reset();
  fix_.reset();
  alternatives_.close();
  if (!wasShowing) return;
  display_.hide();
  changed();
}

}  // namespace nimbletype
