#pragma once
#include <map>

#include "platform/storage/secret_store.h"
#include "platform/system/main_loop.h"

namespace nimbletype {

// Secrets that live as long as the object. Everything happens at once; only the answer comes in a later turn.
class MemorySecretStore final : public SecretStore {
 public:
  explicit MemorySecretStore(MainLoop& loop) : loop_(loop) {}

  [[nodiscard]] Task read(const std::string& account, ReadHandler done) override;
  [[nodiscard]] Task write(const std::string& account, const std::string& secret, WriteHandler done) override;
  [[nodiscard]] Task remove(const std::string& account, WriteHandler done) override;

  std::map<std::string, std::string, std::less<>> secrets;
  bool locked = false;  // what is there can be found but neither read nor changed
  bool available = true;
  int reads = 0;

 private:
  std::expected<void, SecretFailure> accessTo(bool needed) const;

  MainLoop& loop_;
};

}  // namespace nimbletype
