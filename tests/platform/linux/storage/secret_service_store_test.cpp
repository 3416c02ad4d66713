#include "platform/linux/storage/secret_service_store.h"

#include <signal.h>

#include "platform/linux/storage/secret_service_request.h"
#include "platform/scripted/system/virtual_main_loop.h"
#include "tests/platform/storage/secret_store_conformance.h"
#include "tools/stage/private_bus.h"

namespace nimbletype {
namespace {

// The bus is real, time is not: nothing expires unless a test says so.
struct KeyringHarness {
  SecretStore& store() { return *secretService; }
  void reopen() { secretService.emplace(loop); }
  void waitFor(const std::string& what, const std::function<bool()>& condition) {
    nimbletype::waitFor(what, [&] {
      loop.advance(Milliseconds(0));
      return condition();
    });
  }
  void forget() { loop.advance(SecretServiceStore::keptFor); }
  void lock() {
    keyring.lock();
    forget();
  }
  void vanish() {
    keyring.stop();
    forget();
  }

  PrivateKeyring keyring;
  VirtualMainLoop loop;
  std::optional<SecretServiceStore> secretService{loop};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Keyring, SecretStoreConformance, KeyringHarness);

using SecretServiceStoreTest = SecretStoreConformance<KeyringHarness>;

TEST_F(SecretServiceStoreTest, AHungServiceCostsItsPatienceOnce) {
  EXPECT_TRUE(write("key", "secret"));
  kill(keyring.processID(), SIGSTOP);
  EXPECT_EQ(read("key"), "secret") << "what was just written is known";
  forget();
  std::optional<Found> found;
  const Task task = store().read("key", [&](const Found& answer) { found = answer; });
  loop.advance(Milliseconds(0));
  EXPECT_FALSE(found);
  loop.advance(secret_service::patience);
  EXPECT_EQ(found, Found(std::unexpected(SecretFailure::unavailable)));
  EXPECT_EQ(read("key"), std::unexpected(SecretFailure::unavailable));
  kill(keyring.processID(), SIGCONT);
  forget();
  EXPECT_EQ(read("key"), "secret");
}

// A second program's store stands for what somebody else does.
TEST_F(SecretServiceStoreTest, SeesTheChangesOfOthersWhenItForgets) {
  EXPECT_EQ(read("key"), std::nullopt);
  SecretServiceStore other(loop);
  bool written = false;
  const Task task = other.write("key", "new", [&](const auto&) { written = true; });
  waitFor("the other's writing", [&] { return written; });
  EXPECT_EQ(read("key"), std::nullopt);
  forget();
  EXPECT_EQ(read("key"), "new");
  lock();
  EXPECT_EQ(read("key"), std::unexpected(SecretFailure::locked));
  keyring.unlock();
  forget();
  EXPECT_EQ(read("key"), "new");
}

TEST_F(SecretServiceStoreTest, EachApplicationHasItsOwn) {
  EXPECT_TRUE(write("key", "ours"));
  secretService.emplace(loop, "com.example.other");
  EXPECT_EQ(read("key"), std::nullopt);
  EXPECT_TRUE(write("key", "theirs"));
  reopen();
  EXPECT_EQ(read("key"), "ours");
}

}  // namespace
}  // namespace nimbletype
