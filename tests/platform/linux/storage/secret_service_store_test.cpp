#include "platform/linux/storage/secret_service_store.h"

#include <signal.h>

#include "platform/linux/storage/secret_service_request.h"
#include "platform/scripted/system/virtual_main_loop.h"
#include "tests/platform/linux/bus/private_bus.h"
#include "tests/platform/storage/secret_store_conformance.h"

namespace nimbletype {
namespace {

using Found = std::expected<std::optional<std::string>, SecretFailure>;

// The bus is real, time is not: nothing expires unless a test says so.
struct KeyringHarness {
  SecretStore& store() { return *secretService; }
  void reopen() { secretService.emplace(loop); }
  bool runUntil(const std::function<bool()>& done) {
    return nimbletype::runUntil([&] {
      loop.advance(Milliseconds(0));
      return done();
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

class SecretServiceStoreTest : public testing::Test {
 protected:
  Task start() {
    found.reset();
    return harness.store().read("key", [this](const Found& answer) { found = answer; });
  }
  Found read() {
    const Task task = start();
    EXPECT_TRUE(harness.runUntil([&] { return found.has_value(); })) << "the read was never answered";
    return found.value_or(std::nullopt);
  }
  void write(const std::string& secret) {
    bool written = false;
    const Task task =
        harness.store().write("key", secret, [&](const auto& result) { written = result.has_value(); });
    EXPECT_TRUE(harness.runUntil([&] { return written; })) << "the secret was never written";
  }

  KeyringHarness harness;
  std::optional<Found> found;
};

TEST_F(SecretServiceStoreTest, AHungServiceCostsItsPatienceOnce) {
  write("secret");
  kill(harness.keyring.processID(), SIGSTOP);
  EXPECT_EQ(read(), "secret") << "what was just written is known";
  harness.forget();
  const Task task = start();
  harness.runUntil([] { return true; });
  EXPECT_FALSE(found);
  harness.loop.advance(secret_service::patience);
  EXPECT_EQ(found, Found(std::unexpected(SecretFailure::unavailable)));
  EXPECT_EQ(read(), std::unexpected(SecretFailure::unavailable));
  kill(harness.keyring.processID(), SIGCONT);
  harness.forget();
  EXPECT_EQ(read(), "secret");
}

// A second program's store stands for what somebody else does.
TEST_F(SecretServiceStoreTest, SeesTheChangesOfOthersWhenItForgets) {
  EXPECT_EQ(read(), std::nullopt);
  SecretServiceStore other(harness.loop);
  bool written = false;
  const Task task = other.write("key", "new", [&](const auto&) { written = true; });
  EXPECT_TRUE(harness.runUntil([&] { return written; })) << "the secret was never written";
  EXPECT_EQ(read(), std::nullopt);
  harness.forget();
  EXPECT_EQ(read(), "new");
}

}  // namespace
}  // namespace nimbletype
