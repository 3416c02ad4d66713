#pragma once
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "personal/memory/memory_state.h"
#include "personal/memory/memory_vault.h"
#include "platform/system/observers.h"

namespace nimbletype {

// Short passages of the user's own writing, sealed in a file that is written a second after the last change.
// While the file cannot be opened, what is taken meanwhile is kept here and joins it later. Main thread only;
// nothing waits for the file or the secret store.
class WritingMemory {
 public:
  static constexpr Milliseconds saveDelay{1000}, retryDelay{60'000};

  explicit WritingMemory(const MemoryVault::Services& services);
  ~WritingMemory();  // saves what is still unsaved, if the key is at hand
  WritingMemory(const WritingMemory&) = delete;
  WritingMemory& operator=(const WritingMemory&) = delete;

  // Until `load` the file is left alone: it may not be in its place yet.
  void awaitFile() { opening_ = true; }
  // Reads the file; once, at the start.
  void load();
  // Takes a passage from the text of a field. `appKey` is a rule key.
  void remember(std::string_view text, const std::string& appKey, WallTime date);
  // What shows how the user writes, best first.
  std::vector<std::string> passages(std::string_view context, std::string_view appKey, int limit) const;
  std::size_t count() const { return entries_->size(); }
  std::size_t count(std::string_view appKey) const;
  void forget(const std::string& appKey);
  // Nothing is left: neither passages nor the file, what was set aside of it, and the key.
  void eraseAll();
  // Tries again what failed, and may ask the user to unlock the secret store.
  void retry();

  // For quitting: saves now. What still needs the key from the secret store is under way while `isBusy`.
  void finish();
  bool isBusy() const { return saving_ || (opening_ && unsaved_); }

  const MemoryEntries& entries() const { return *entries_; }
  const MemoryState& state() const { return state_; }
  // Told after every change of the passages and of the state.
  [[nodiscard]] Task observe(Observers::Callback changed) const { return observers_.add(std::move(changed)); }

 private:
  MemoryEntries& own();
  void changed();
  void saveSoon();
  void save();
  void saved(std::expected<void, VaultFailure> result);
  void erased(std::expected<void, VaultFailure> result);
  void goOn();
  void opened(std::expected<MemoryVault::Opened, VaultFailure> result);
  void merge(MemoryEntries older);
  void failed(VaultFailure failure);
  void setState(MemoryState state);

  MainLoop& loop_;
  MemoryVault vault_;
  std::shared_ptr<MemoryEntries> entries_ = std::make_shared<MemoryEntries>();  // shared with a running save
  std::set<std::string, std::less<>> forgotten_;  // app keys, while the file is not open
  MemoryState state_;
  std::string notice_;  // what the user should know although all is well now
  Observers observers_;
  bool isOpen_ = false, opening_ = false, saving_ = false, unsaved_ = false;
  bool eraseOwed_ = false;  // some of it is still there
  Task save_, retry_;
};

}  // namespace nimbletype
