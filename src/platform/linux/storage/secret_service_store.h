#pragma once
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "platform/storage/secret_store.h"
#include "platform/system/main_loop.h"

namespace nimbletype {

// The port over the Secret Service. A read costs several calls over the bus, so what it found is kept for
// some seconds: a burst of requests pays once. A change made by another program is noticed that much later.
class SecretServiceStore final : public SecretStore {
 public:
  static constexpr Milliseconds keptFor{5000};

  // Of the application that keeps its secrets under this name.
  explicit SecretServiceStore(MainLoop& loop, std::string application = "com.moravelle.nimbletype")
      : loop_(loop), application_(std::move(application)) {}

  [[nodiscard]] Task read(const std::string& account, ReadHandler done) override;
  // A locked store asks the user to unlock it. The item is named after the application and the account.
  [[nodiscard]] Task write(const std::string& account, const std::string& secret, WriteHandler done) override;
  [[nodiscard]] Task remove(const std::string& account, WriteHandler done) override;

 private:
  using Found = std::expected<std::optional<std::string>, SecretFailure>;
  struct Kept {
    Found found;
    Task expiry;
  };
  // Shared with requests, which may outlive the store.
  struct Memory {
    std::map<std::string, Kept, std::less<>> accounts;
    std::uint64_t changes = 0;  // a read that began before the last one is out of date
  };
  static void keep(const std::weak_ptr<Memory>& memory, MainLoop& loop, const std::string& account,
                   Found found);
  WriteHandler changing(const std::string& account, std::optional<std::string> secret, WriteHandler done);

  MainLoop& loop_;
  std::string application_;
  std::shared_ptr<Memory> memory_ = std::make_shared<Memory>();
};

}  // namespace nimbletype
