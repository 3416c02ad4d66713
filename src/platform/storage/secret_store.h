#pragma once
#include <expected>
#include <functional>
#include <optional>
#include <string>

#include "platform/system/task.h"

namespace nimbletype {

// Why a secret could not be read or kept. None of these means that it does not exist.
enum class SecretFailure {
  locked,       // the user has not unlocked the store
  unavailable,  // there is no store, or it does not answer
};

// The system's keeper of secrets. Each is known by an account name within this application. Handlers run on
// the main thread in a later turn; destroying the task leaves them uncalled. The user is never asked to
// unlock the store for a read.
class SecretStore {
 public:
  using ReadHandler = std::function<void(std::expected<std::optional<std::string>, SecretFailure>)>;
  using WriteHandler = std::function<void(std::expected<void, SecretFailure>)>;

  virtual ~SecretStore() = default;
  // None when there is no such secret. Secrets are bytes.
  [[nodiscard]] virtual Task read(const std::string& account, ReadHandler done) = 0;
  [[nodiscard]] virtual Task write(const std::string& account, const std::string& secret,
                                   WriteHandler done) = 0;
  // Removing what is not there succeeds.
  [[nodiscard]] virtual Task remove(const std::string& account, WriteHandler done) = 0;
};

}  // namespace nimbletype
