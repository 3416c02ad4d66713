#include "personal/memory/writing_memory.h"

#include <algorithm>
#include <utility>

#include "text/text.h"

namespace nimbletype {

WritingMemory::WritingMemory(const MemoryVault::Services& services)
    : loop_(services.loop), vault_(services) {}

WritingMemory::~WritingMemory() {
  if (isOpen_ && (unsaved_ || (saving_ && !eraseOwed_))) vault_.saveNow(*entries_);
}

// --- what is remembered ---

void WritingMemory::remember(std::string_view text, const std::string& appKey, WallTime date) {
  std::string passage = clippedPassage(text);
  if (text::characterCount(passage) < shortestPassage) return;
  keep(own(), newEntry(std::move(passage), appKey, date));
  changed();
}

std::vector<std::string> WritingMemory::passages(std::string_view context, std::string_view appKey,
                                                 int limit) const {
  return chosenPassages(*entries_, context, appKey, limit);
}

std::size_t WritingMemory::count(std::string_view appKey) const {
  return static_cast<std::size_t>(std::ranges::count(*entries_, appKey, &MemoryEntry::appKey));
}

void WritingMemory::forget(const std::string& appKey) {
  if (!isOpen_) forgotten_.insert(appKey);
  if (isOpen_ && count(appKey) == 0) return;
  std::erase_if(own(), [&](const MemoryEntry& entry) { return entry.appKey == appKey; });
  changed();
}

void WritingMemory::eraseAll() {
  save_.cancel();
  retry_.cancel();
  entries_ = std::make_shared<MemoryEntries>();
  forgotten_.clear();
  notice_.clear();
  isOpen_ = saving_ = eraseOwed_ = true;
  opening_ = unsaved_ = false;
  vault_.erase([this](auto result) { erased(result); });
  setState({MemoryState::Case::ready, {}});
  observers_.notify();
}

void WritingMemory::erased(std::expected<void, VaultFailure> result) {
  saving_ = false;
  eraseOwed_ = !result;
  if (!result) failed(result.error());
  if (unsaved_) saveSoon();
}

// A save that runs keeps what it began with.
MemoryEntries& WritingMemory::own() {
  if (entries_.use_count() > 1) entries_ = std::make_shared<MemoryEntries>(*entries_);
  return *entries_;
}

// --- the file ---

void WritingMemory::load() {
  opening_ = true;
  vault_.open([this](auto result) { opened(std::move(result)); });
}

void WritingMemory::opened(std::expected<MemoryVault::Opened, VaultFailure> result) {
  opening_ = false;
  if (!result) return failed(result.error());
  isOpen_ = true;
  merge(std::move(result->entries));
  if (result->setAside)
    notice_ = "Your writing memory could not be opened and was set aside; it starts anew.";
  setState({MemoryState::Case::ready, notice_});
  if (unsaved_) saveSoon();
  observers_.notify();
}

// As if the file had been open when these were taken or forgotten.
void WritingMemory::merge(MemoryEntries older) {
  std::erase_if(older, [this](const MemoryEntry& entry) { return forgotten_.contains(entry.appKey); });
  forgotten_.clear();
  for (const MemoryEntry& entry : *entries_) keep(older, entry);
  entries_ = std::make_shared<MemoryEntries>(std::move(older));
}

void WritingMemory::changed() {
  unsaved_ = true;
  saveSoon();
  observers_.notify();
}

void WritingMemory::saveSoon() {
  save_ = loop_.after(saveDelay, [this] { save(); });
}

void WritingMemory::save() {
  save_.cancel();
  if (opening_ || saving_ || !unsaved_) return;
  if (!isOpen_) return load();
  saving_ = true;
  unsaved_ = false;
  vault_.save(entries_, [this](auto result) { saved(result); });
}

void WritingMemory::saved(std::expected<void, VaultFailure> result) {
  saving_ = false;
  if (!result) {
    unsaved_ = true;
    return failed(result.error());
  }
  eraseOwed_ = false;
  setState({MemoryState::Case::ready, notice_});
  if (unsaved_) saveSoon();
}

void WritingMemory::failed(VaultFailure failure) {
  const bool goesOn = isOpen_ && failure == VaultFailure::notWritten;
  setState({goesOn ? MemoryState::Case::ready : MemoryState::Case::paused, sentenceFor(failure)});
  retry_ = loop_.after(retryDelay, [this] { goOn(); });
}

void WritingMemory::goOn() {
  if (opening_ || saving_) return;
  if (!isOpen_) return load();
  eraseOwed_ && !unsaved_ ? eraseAll() : save();
}

void WritingMemory::retry() {
  vault_.askAgain();
  goOn();
}

void WritingMemory::finish() {
  if (!unsaved_ && (!saving_ || eraseOwed_)) return;
  if (isOpen_ && vault_.saveNow(*entries_)) {
    unsaved_ = saving_ = false;
    save_.cancel();
    return;
  }
  if (saving_) unsaved_ = true;
  saving_ = false;
  save();
}

void WritingMemory::setState(MemoryState state) {
  if (state == state_) return;
  state_ = std::move(state);
  observers_.notify();
}

}  // namespace nimbletype
