#include "platform/scripted/storage/memory_secret_store.h"

#include <utility>

namespace nimbletype {

// A locked store still tells what it does not have.
std::expected<void, SecretFailure> MemorySecretStore::accessTo(bool needed) const {
  if (!available) return std::unexpected(SecretFailure::unavailable);
  if (locked && needed) return std::unexpected(SecretFailure::locked);
  return {};
}

Task MemorySecretStore::read(const std::string& account, ReadHandler done) {
  ++reads;
  const auto found = secrets.find(account);
  const auto access = accessTo(found != secrets.end());
  std::expected<std::optional<std::string>, SecretFailure> answer;
  if (!access)
    answer = std::unexpected(access.error());
  else if (found != secrets.end())
    answer = found->second;
  return loop_.after(Milliseconds(0), [done = std::move(done), answer] { done(answer); });
}

Task MemorySecretStore::write(const std::string& account, const std::string& secret, WriteHandler done) {
  const auto access = accessTo(true);
  if (access) secrets[account] = secret;
  return loop_.after(Milliseconds(0), [done = std::move(done), access] { done(access); });
}

Task MemorySecretStore::remove(const std::string& account, WriteHandler done) {
  const auto access = accessTo(secrets.contains(account));
  if (access) secrets.erase(account);
  return loop_.after(Milliseconds(0), [done = std::move(done), access] { done(access); });
}

}  // namespace nimbletype
