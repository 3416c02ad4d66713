#include <gmock/gmock.h>

#include "personal/memory/writing_memory.h"
#include "platform/linux/storage/secret_service_request.h"
#include "platform/linux/storage/secret_service_store.h"
#include "platform/scripted/system/recording_system_log.h"
#include "platform/scripted/system/scripted_background_work.h"
#include "platform/scripted/system/virtual_main_loop.h"
#include "platform/storage/atomic_file.h"
#include "tests/platform/linux/bus/private_bus.h"

namespace nimbletype {
namespace {

using testing::HasSubstr;
using State = MemoryState::Case;

// A real keyring and a real file. Time is virtual, so that nothing is waited for but the keyring.
class WritingMemoryKeyringTest : public testing::Test {
 protected:
  void start() {
    memory.reset();
    store.emplace(loop);
    memory.emplace(MemoryVault::Services{file, *store, background, loop, log});
    memory->load();
  }
  bool comesTo(const std::function<bool()>& condition) {
    return runUntil([&] {
      loop.advance(Milliseconds(0));
      return condition();
    });
  }
  bool is(State state) {
    return comesTo([&] { return memory->state().state == state; });
  }
  void take(const std::string& text) {
    memory->remember(text, "app:a", loop.wallNow());
    loop.advance(WritingMemory::saveDelay);
  }
  void saveFirst(const std::string& text) {
    start();
    ASSERT_TRUE(is(State::ready)) << "it never found that there is no file";
    take(text);
    ASSERT_TRUE(comesTo([&] { return file.read().has_value(); }))
        << "the passage was never saved: " << memory->state().problem;
  }

  PrivateKeyring keyring;
  TemporaryFolder folder;
  std::filesystem::path path = folder.path / "memory.sealed";
  VirtualMainLoop loop;
  AtomicFile file{path};
  ScriptedBackgroundWork background{loop};
  RecordingSystemLog log;
  std::optional<SecretServiceStore> store;
  std::optional<WritingMemory> memory;
};

TEST_F(WritingMemoryKeyringTest, ALockedKeyringLosesNothing) {
  ASSERT_NO_FATAL_FAILURE(saveFirst("Taken while the keyring was open"));
  const auto before = file.read();

  keyring.lock();
  start();
  ASSERT_TRUE(is(State::paused)) << "nobody noticed that the keyring is locked";
  EXPECT_THAT(memory->state().problem, HasSubstr("until your Keychain is unlocked"));
  take("Taken while the keyring was locked");
  EXPECT_EQ(file.read(), before);

  keyring.unlock();
  loop.advance(SecretServiceStore::keptFor);
  memory->retry();
  ASSERT_TRUE(is(State::ready)) << "the file was never opened";
  loop.advance(WritingMemory::saveDelay);
  ASSERT_TRUE(comesTo([&] { return file.read() != before; })) << "what was taken meanwhile was never saved";
  start();
  ASSERT_TRUE(is(State::ready)) << "the file was never opened";
  EXPECT_EQ(memory->count(), 2U);
  EXPECT_FALSE(std::filesystem::exists(path.string() + ".unreadable"));
}

TEST_F(WritingMemoryKeyringTest, AKeyringThatIsGoneReplacesNoKey) {
  ASSERT_NO_FATAL_FAILURE(saveFirst("Taken while there was a keyring"));
  const auto before = file.read();
  keyring.stop();
  start();
  loop.advance(Milliseconds(0));
  loop.advance(secret_service::patience);
  ASSERT_TRUE(is(State::paused)) << "nobody noticed that the keyring has gone";
  EXPECT_THAT(memory->state().problem, HasSubstr("doesn't answer"));
  take("Taken while there was no keyring");
  loop.advance(2 * WritingMemory::retryDelay);
  EXPECT_EQ(file.read(), before);
  EXPECT_EQ(memory->count(), 1U);
}

TEST_F(WritingMemoryKeyringTest, ErasesTheKeyAsWell) {
  ASSERT_NO_FATAL_FAILURE(saveFirst("To be erased again with its key"));
  memory->eraseAll();
  ASSERT_TRUE(comesTo([&] { return !memory->isBusy(); })) << "erasing never ended";
  std::optional<bool> hasKey;
  const Task reading =
      store->read(MemoryVault::account, [&](const auto& found) { hasKey = found && found->has_value(); });
  ASSERT_TRUE(comesTo([&] { return hasKey.has_value(); })) << "the keyring never answered";
  EXPECT_FALSE(*hasKey);
  EXPECT_TRUE(std::filesystem::is_empty(folder.path));
}

}  // namespace
}  // namespace nimbletype
