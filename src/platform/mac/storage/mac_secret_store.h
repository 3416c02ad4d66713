#pragma once
#include <string>
#include <utility>

#include "platform/storage/secret_store.h"

namespace nimbletype {

// The port over generic passwords in the user's Keychain: usable once the user has logged in, never carried
// to another computer.
class MacSecretStore final : public SecretStore {
 public:
  // Of the application that keeps its secrets under this service.
  explicit MacSecretStore(std::string service = "com.moravelle.nimbletype") : service_(std::move(service)) {}
  [[nodiscard]] Task read(const std::string& account, ReadHandler done) override;
  [[nodiscard]] Task write(const std::string& account, const std::string& secret, WriteHandler done) override;
  [[nodiscard]] Task remove(const std::string& account, WriteHandler done) override;

 private:
  std::string service_;
};

}  // namespace nimbletype
