#pragma once
#include <string>

#include "platform/storage/secret_store.h"
#include "platform/system/main_loop.h"

// Single exchanges with the Secret Service of the session bus. The service is started by the first of them
// where the desktop has not started it. All run on the default main context, which the loop must serve.
namespace nimbletype::secret_service {

// A service that has not answered by then counts as unavailable.
constexpr Milliseconds patience{3000};
// For a write, once the service has answered: it asks the user to unlock what is locked.
constexpr Milliseconds patienceWithUser{60'000};

// An account within an application, known by the name of its schema.
struct Place {
  std::string application, account;
};

[[nodiscard]] Task read(MainLoop& loop, const Place& place, SecretStore::ReadHandler done);
[[nodiscard]] Task write(MainLoop& loop, const Place& place, const std::string& secret,
                         SecretStore::WriteHandler done);
// What is locked stays; the user is not asked.
[[nodiscard]] Task remove(MainLoop& loop, const Place& place, SecretStore::WriteHandler done);

}  // namespace nimbletype::secret_service
