#pragma once
#include <expected>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "personal/memory/passages.h"
#include "personal/memory/sealed_box.h"
#include "platform/storage/file_store.h"
#include "platform/storage/secret_store.h"
#include "platform/system/background_work.h"
#include "platform/system/main_loop.h"
#include "platform/system/system_log.h"

namespace nimbletype {

// What keeps passages from being read or kept.
enum class VaultFailure {
  keyLocked,       // the user has not unlocked the secret store
  keyUnavailable,  // there is no secret store, or it does not answer
  keyDamaged,      // what is kept under the account is no key
  fileStays,       // the file can be neither opened nor moved out of the way
  notWritten,      // the disk is full, say
  notErased,       // a file is still there
};

// The sealed file and the key to it. One thing at a time: starting another, and destroying the vault, ends
// what is under way, a write after it is whole. A key that cannot be read is never replaced, and what cannot
// be opened is set aside, never overwritten. Sealing and writing happen in the background. Main thread only.
class MemoryVault {
 public:
  static constexpr const char* account = "writing-memory-key";

  struct Services {
    FileStore& file;
    SecretStore& secrets;
    BackgroundWork& background;
    MainLoop& loop;
    SystemLog& log;
  };
  struct Opened {
    MemoryEntries entries;
    bool setAside = false;  // there was a file, and nobody can open it
  };
  using Entries = std::shared_ptr<const MemoryEntries>;
  using OpenHandler = std::function<void(std::expected<Opened, VaultFailure>)>;
  using SaveHandler = std::function<void(std::expected<void, VaultFailure>)>;

  explicit MemoryVault(const Services& services) : s_(services) {}

  // Without a file the secret store is left alone.
  void open(OpenHandler done);
  // Makes the key when there is none.
  void save(Entries entries, SaveHandler done);
  // At once, when the key is at hand.
  bool saveNow(const MemoryEntries& entries);
  // Removes the file, what was set aside, and the key, which the next save makes anew.
  void erase(SaveHandler done);
  void cancel();
  // The user may be asked again to unlock the store.
  void askAgain() { mayMakeKey_ = true; }

 private:
  using KeyResult = std::expected<void, VaultFailure>;
  using KeyHandler = std::function<void(KeyResult)>;
  using SecretRead = std::expected<std::optional<std::string>, SecretFailure>;

  void fileRead(const std::optional<std::string>& content);
  void unseal(const std::string& content);
  void setAside();
  void readKey(std::function<void(std::expected<bool, VaultFailure>)> done);
  void ensureKey(KeyHandler done);
  void makeKey(KeyHandler done);
  void removeKey(KeyHandler done);
  void seal(Entries entries);

  Services s_;
  // Kept from the first time it was read: what is unsaved at the end has to be sealed without waiting.
  SecretBytes key_;
  bool mayMakeKey_ = true;    // no one has refused it
  bool keyIsErased_ = false;  // the one in the store, if it is still there, is not to be used any more
  OpenHandler opened_;
  SaveHandler saved_;
  Task secret_, work_;
};

}  // namespace nimbletype
