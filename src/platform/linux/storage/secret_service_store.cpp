#include "platform/linux/storage/secret_service_store.h"

#include <utility>

#include "platform/linux/storage/secret_service_request.h"

namespace nimbletype {

void SecretServiceStore::keep(const std::weak_ptr<Memory>& memory, MainLoop& loop, const std::string& account,
                              Found found) {
  const auto alive = memory.lock();
  if (!alive) return;
  auto expiry = loop.after(keptFor, [memory, account] {
    if (const auto later = memory.lock()) later->accounts.erase(account);
  });
  alive->accounts.insert_or_assign(account, Kept{std::move(found), std::move(expiry)});
}

Task SecretServiceStore::read(const std::string& account, ReadHandler done) {
  if (const auto kept = memory_->accounts.find(account); kept != memory_->accounts.end())
    return loop_.after(Milliseconds(0),
                       [done = std::move(done), found = kept->second.found] { done(found); });
  const std::weak_ptr memory = memory_;
  return secret_service::read(
      loop_, {application_, account},
      [memory, &loop = loop_, account, began = memory_->changes, done = std::move(done)](const Found& found) {
        const auto alive = memory.lock();
        if (alive && alive->changes == began) keep(memory, loop, account, found);
        done(found);
      });
}

// While a change is under way, and when it fails, nobody knows what the store holds.
SecretStore::WriteHandler SecretServiceStore::changing(const std::string& account,
                                                       std::optional<std::string> secret, WriteHandler done) {
  memory_->accounts.erase(account);
  return [memory = std::weak_ptr(memory_), &loop = loop_, account, secret = std::move(secret),
          began = ++memory_->changes, done = std::move(done)](const auto& result) {
    const auto alive = memory.lock();
    if (alive && alive->changes++ == began && result) keep(memory, loop, account, secret);
    done(result);
  };
}

Task SecretServiceStore::write(const std::string& account, const std::string& secret, WriteHandler done) {
  return secret_service::write(loop_, {application_, account}, secret,
                               changing(account, secret, std::move(done)));
}

Task SecretServiceStore::remove(const std::string& account, WriteHandler done) {
  return secret_service::remove(loop_, {application_, account},
                                changing(account, std::nullopt, std::move(done)));
}

}  // namespace nimbletype
