#include "core/app/migration/migration.h"

#include <gmock/gmock.h>

#include <map>

#include "platform/scripted/storage/memory_defaults_store.h"
#include "platform/scripted/storage/memory_secret_store.h"
#include "platform/scripted/system/recording_system_log.h"
#include "platform/scripted/system/scripted_background_work.h"
#include "platform/scripted/system/virtual_main_loop.h"
#include "platform/storage/atomic_file.h"
#include "tools/stage/temporary_folder.h"

namespace nimbletype {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Pair;
using testing::UnorderedElementsAre;
using Tree = std::map<std::string, std::string>;

Tree filesUnder(const fs::path& folder) {
  Tree files;
  for (const auto& entry : fs::recursive_directory_iterator(folder))
    if (entry.is_regular_file())
      files[fs::relative(entry.path(), folder).string()] = AtomicFile(entry.path()).read().value_or("?");
  return files;
}

class MigrationTest : public testing::Test {
 protected:
  MigrationTest() { fs::create_directory(earlier); }
  // One start of the application.
  void start() {
    loadedAfter.reset();
    log.lines.clear();
    Migration migration({defaults, earlierDefaults, secrets, earlierSecrets, background, log},
                        {earlier, ours});
    migration.finish({[&] { loadedAfter = filesUnder(ours); }, [&] { ++largeFilesCame; }});
    for (int turn = 0; turn < 5; ++turn) loop.advance(Milliseconds(0));
    EXPECT_TRUE(loadedAfter) << "the memory is never kept waiting for good";
  }
  void put(const fs::path& file, const std::string& content) { AtomicFile(file).write(content); }
  bool isMarked() const { return defaults.get("migratedFromPlumlet") == DefaultsValue(true); }

  TemporaryFolder root;
  const fs::path earlier = root.path / "Plumlet", ours = root.path / "Nimbletype";
  const std::string account = "writing-memory-key", key = std::string(32, 'k');
  VirtualMainLoop loop;
  MemoryDefaultsStore defaults, earlierDefaults;
  MemorySecretStore secrets{loop}, earlierSecrets{loop};
  ScriptedBackgroundWork background{loop};
  RecordingSystemLog log;
  std::optional<Tree> loadedAfter;  // what stood there when the memory was let go
  int largeFilesCame = 0;
};

TEST_F(MigrationTest, CarriesOverOnceWhatIsMissing) {
  put(earlier / "rules.json", "rules");
  put(earlier / "stats.json", "theirs");
  put(earlier / "Models" / "a.gguf", "model");
  put(earlier / "Models" / "a.gguf.verified", "digest");
  put(earlier / "Models" / ".incoming-b.gguf", "half");
  put(earlier / "memory.sealed", "box");
  put(root.path / "elsewhere", "private");
  fs::create_symlink(root.path / "elsewhere", earlier / "link.json");
  put(ours / "stats.json", "ours");
  put(ours / ".rules.json.copying", "cut short, and longer than the file");
  earlierSecrets.secrets[account] = key;
  earlierDefaults.set("creativity", 0.9);
  const auto before = filesUnder(earlier);
  start();
  const Tree expected{{"rules.json", "rules"},
                      {"stats.json", "ours"},
                      {"Models/a.gguf", "model"},
                      {"Models/a.gguf.verified", "digest"},
                      {"memory.sealed", "box"}};
  EXPECT_EQ(filesUnder(ours), expected);
  EXPECT_EQ(loadedAfter, expected);
  EXPECT_EQ(secrets.secrets[account], key);
  EXPECT_EQ(defaults.get("creativity"), DefaultsValue(0.9));
  EXPECT_TRUE(isMarked());
  EXPECT_EQ(defaults.writtenKeys.back(), "migratedFromPlumlet");
  EXPECT_THAT(log.lines, IsEmpty());
  EXPECT_EQ(filesUnder(earlier), before);
  EXPECT_THAT(earlierSecrets.secrets, UnorderedElementsAre(Pair(account, key)));
  EXPECT_THAT(earlierDefaults.writtenKeys, UnorderedElementsAre("creativity"));

  fs::remove(ours / "rules.json");
  fs::remove(ours / "memory.sealed");
  defaults.remove("creativity");
  start();
  EXPECT_FALSE(fs::exists(ours / "rules.json"));
  EXPECT_FALSE(fs::exists(ours / "memory.sealed"));
  EXPECT_FALSE(defaults.get("creativity"));
}

TEST_F(MigrationTest, WithoutAnEarlierProductOnlyTheMarkIsMade) {
  fs::remove(earlier);
  fs::create_directory(ours);
  start();
  EXPECT_THAT(filesUnder(ours), IsEmpty());
  EXPECT_TRUE(isMarked());
  EXPECT_EQ(earlierSecrets.reads + secrets.reads, 0);
}

// As a crash does, a failure leaves some of the work undone; nothing of it may be lost or half.
TEST_F(MigrationTest, StartsOverAfterAFailure) {
  put(earlier / "rules.json", "rules");
  put(earlier / "stats.json", "stats");
  put(earlier / "memory.sealed", "box");
  earlierSecrets.secrets[account] = secrets.secrets[account] = key;
  fs::create_directories(ours / ".rules.json.copying" / "in the way");
  start();
  EXPECT_FALSE(isMarked());
  ASSERT_EQ(log.lines.size(), 1U);
  EXPECT_THAT(log.lines[0].message, HasSubstr("rules.json: "));
  EXPECT_THAT(filesUnder(ours),
              UnorderedElementsAre(Pair("stats.json", "stats"), Pair("memory.sealed", "box")));
  put(ours / "stats.json", "newer");
  fs::remove_all(ours / ".rules.json.copying");
  start();
  EXPECT_TRUE(isMarked());
  EXPECT_THAT(filesUnder(ours), UnorderedElementsAre(Pair("stats.json", "newer"), Pair("rules.json", "rules"),
                                                     Pair("memory.sealed", "box")));
}

TEST_F(MigrationTest, WaitsForAKeyThatCannotBeHadNow) {
  put(earlier / "memory.sealed", "box");
  earlierSecrets.secrets[account] = key;
  const auto expectPostponed = [&](const std::string& why) {
    start();
    EXPECT_FALSE(isMarked()) << why;
    EXPECT_FALSE(fs::exists(ours / "memory.sealed")) << why;
    ASSERT_EQ(log.lines.size(), 1U) << why;
    EXPECT_THAT(log.lines[0].message, HasSubstr(why));
  };
  fs::create_directory(ours);
  earlierSecrets.locked = true;
  expectPostponed("locked");
  earlierSecrets.locked = false;
  secrets.locked = true;
  expectPostponed("locked");
  secrets.locked = secrets.available = false;
  expectPostponed("does not answer");
  secrets.available = true;
  start();
  EXPECT_TRUE(isMarked());
  EXPECT_THAT(filesUnder(ours), UnorderedElementsAre(Pair("memory.sealed", "box")));
  EXPECT_EQ(secrets.secrets[account], key);
}

TEST_F(MigrationTest, SetsAMemoryAsideThatNoKeyOpens) {
  put(earlier / "memory.sealed", "box");
  start();
  EXPECT_THAT(filesUnder(ours), UnorderedElementsAre(Pair("memory.sealed.unreadable", "box")));
  EXPECT_EQ(log.lines.size(), 1U);
  EXPECT_TRUE(isMarked());
  defaults.remove("migratedFromPlumlet");
  start();
  EXPECT_EQ(filesUnder(ours).size(), 1U) << "once is enough";
}

TEST_F(MigrationTest, OurMemoryAndItsKeyStay) {
  put(earlier / "memory.sealed", "theirs");
  put(ours / "memory.sealed", "ours");
  earlierSecrets.secrets[account] = key;
  start();
  EXPECT_THAT(filesUnder(ours), UnorderedElementsAre(Pair("memory.sealed", "ours")));
  EXPECT_THAT(secrets.secrets, IsEmpty());
  EXPECT_TRUE(isMarked());
  ASSERT_EQ(log.lines.size(), 1U);
  EXPECT_THAT(log.lines[0].message, HasSubstr("stays where it is"));
}

TEST_F(MigrationTest, LinksALargeFile) {
  put(earlier / "Models" / "a.gguf", std::string(Migration::largeSize, 'x'));
  start();
  EXPECT_TRUE(fs::equivalent(earlier / "Models" / "a.gguf", ours / "Models" / "a.gguf"));
  EXPECT_EQ(largeFilesCame, 0);
}

TEST_F(MigrationTest, CopiesALargeFileLaterWhereItCannotBeLinked) {
  const fs::path otherDisk = "/dev/shm";
  std::error_code error;
  if (!fs::is_directory(otherDisk, error)) GTEST_SKIP() << "there is no other disk";
  const TemporaryFolder other(otherDisk);
  fs::create_directory(other.path / "Models");
  fs::create_directory_symlink(other.path / "Models", root.path / "Models");
  fs::create_directory(ours);
  fs::rename(root.path / "Models", ours / "Models");
  const std::string model(Migration::largeSize, 'x');
  put(earlier / "Models" / "a.gguf", model);
  background.hold();
  start();
  EXPECT_FALSE(isMarked());
  EXPECT_EQ(background.waiting(), 0U) << "quitting ends it";
  background.release();
  start();
  EXPECT_EQ(AtomicFile(other.path / "Models" / "a.gguf").read(), model);
  EXPECT_EQ(largeFilesCame, 1);
  EXPECT_TRUE(isMarked());
}

}  // namespace
}  // namespace nimbletype
