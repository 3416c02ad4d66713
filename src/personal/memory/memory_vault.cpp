#include "personal/memory/memory_vault.h"

#include <utility>

#include "personal/memory/memory_json.h"

namespace nimbletype {
namespace {

constexpr std::string_view logCategory = "memory";

VaultFailure failureOf(SecretFailure failure) {
  return failure == SecretFailure::locked ? VaultFailure::keyLocked : VaultFailure::keyUnavailable;
}

void wipe(std::string& text) {
  OPENSSL_cleanse(text.data(), text.size());
}

bool sealInto(FileStore& file, const MemoryEntries& entries, const SecretBytes& key) {
  const SecretBytes plain = encoded(entries);
  const auto box = sealed({plain.data(), plain.size()}, key);
  return box && file.write(*box);
}

std::optional<MemoryEntries> entriesIn(const std::string& content, const SecretBytes& key) {
  const auto plain = opened(content, key);
  return plain ? decoded({plain->data(), plain->size()}) : std::nullopt;
}

template <typename Handler, typename Answer>
void answer(Handler& handler, Answer result) {
  if (const auto done = std::exchange(handler, nullptr)) done(std::move(result));
}

}  // namespace

void MemoryVault::cancel() {
  opened_ = nullptr;
  saved_ = nullptr;
  secret_.cancel();
  work_.cancel();
}

// --- opening ---

void MemoryVault::open(OpenHandler done) {
  cancel();
  opened_ = std::move(done);
  const auto content = std::make_shared<std::optional<std::string>>();
  work_ = s_.background.run([&file = s_.file, content](const auto&) { *content = file.read(); },
                            [this, content] { fileRead(*content); });
}

void MemoryVault::fileRead(const std::optional<std::string>& content) {
  if (!content) {
    // One that is there and cannot be read is not to be overwritten either.
    if (s_.file.setAside()) return answer(opened_, Opened{});
    return answer(opened_, std::unexpected(VaultFailure::fileStays));
  }
  readKey([this, content = *content](std::expected<bool, VaultFailure> found) {
    if (!found) return answer(opened_, std::unexpected(found.error()));
    return *found ? unseal(content) : setAside();
  });
}

void MemoryVault::unseal(const std::string& content) {
  const auto entries = std::make_shared<std::optional<MemoryEntries>>();
  work_ =
      s_.background.run([content, key = key_, entries](const auto&) { *entries = entriesIn(content, key); },
                        [this, entries] {
                          if (!*entries) return setAside();
                          answer(opened_, Opened{std::move(**entries), false});
                        });
}

void MemoryVault::setAside() {
  const bool done = s_.file.setAside();
  s_.log.log(logCategory, done ? "the memory file cannot be opened and was set aside"
                               : "the memory file can be neither opened nor set aside");
  if (done) return answer(opened_, Opened{{}, true});
  answer(opened_, std::unexpected(VaultFailure::fileStays));
}

// --- the key ---

// Whether there is one.
void MemoryVault::readKey(std::function<void(std::expected<bool, VaultFailure>)> done) {
  secret_ = s_.secrets.read(account, [this, done = std::move(done)](SecretRead read) {
    if (!read) return done(std::unexpected(failureOf(read.error())));
    if (!*read) return done(false);
    std::string& secret = **read;
    const bool isKey = secret.size() == sealingKeySize;
    if (isKey) key_.assign(secret.begin(), secret.end());
    wipe(secret);
    if (!isKey) return done(std::unexpected(VaultFailure::keyDamaged));
    done(true);
  });
}

// One that was read before is still good while the store is locked. One that has gone from it is not, as the
// file could not be opened any more.
void MemoryVault::ensureKey(KeyHandler done) {
  if (keyIsErased_)
    return removeKey([this, done = std::move(done)](KeyResult removed) {
      if (!removed) return done(removed);
      makeKey(done);
    });
  readKey([this, done = std::move(done)](std::expected<bool, VaultFailure> found) {
    if (!found && (key_.empty() || found.error() == VaultFailure::keyDamaged))
      return done(std::unexpected(found.error()));
    if (found && !*found) return makeKey(done);
    done({});
  });
}

// A locked store asks the user to unlock it; one who refuses is not asked again and again.
void MemoryVault::makeKey(KeyHandler done) {
  if (!mayMakeKey_) return done(std::unexpected(VaultFailure::keyLocked));
  SecretBytes made = newSealingKey();
  if (made.empty()) return done(std::unexpected(VaultFailure::keyUnavailable));
  std::string secret(made.begin(), made.end());
  secret_ = s_.secrets.write(
      account, secret, [this, made, done = std::move(done)](std::expected<void, SecretFailure> written) {
        mayMakeKey_ = written || written.error() != SecretFailure::locked;
        if (!written) return done(std::unexpected(failureOf(written.error())));
        key_ = made;
        done({});
      });
  wipe(secret);
}

void MemoryVault::removeKey(KeyHandler done) {
  secret_ =
      s_.secrets.remove(account, [this, done = std::move(done)](std::expected<void, SecretFailure> removed) {
        if (!removed) return done(std::unexpected(failureOf(removed.error())));
        keyIsErased_ = false;
        done({});
      });
}

// --- saving ---

void MemoryVault::save(Entries entries, SaveHandler done) {
  cancel();
  saved_ = std::move(done);
  ensureKey([this, entries = std::move(entries)](KeyResult ready) {
    if (!ready) return answer(saved_, ready);
    seal(entries);
  });
}

void MemoryVault::seal(Entries entries) {
  const auto written = std::make_shared<bool>(false);
  work_ = s_.background.run(
      [&file = s_.file, entries = std::move(entries), key = key_, written](const auto& cancelled) {
        if (!cancelled) *written = sealInto(file, *entries, key);
      },
      [this, written] {
        if (*written) return answer(saved_, KeyResult());
        s_.log.log(logCategory, "the passages could not be saved");
        answer(saved_, KeyResult(std::unexpected(VaultFailure::notWritten)));
      });
}

bool MemoryVault::saveNow(const MemoryEntries& entries) {
  cancel();
  return !key_.empty() && !keyIsErased_ && sealInto(s_.file, entries, key_);
}

void MemoryVault::erase(SaveHandler done) {
  cancel();
  key_ = {};
  keyIsErased_ = true;
  askAgain();
  saved_ = std::move(done);
  const bool gone = s_.file.erase();
  removeKey([this, gone](KeyResult removed) {
    if (removed && !gone) removed = std::unexpected(VaultFailure::notErased);
    answer(saved_, removed);
  });
}

}  // namespace nimbletype
