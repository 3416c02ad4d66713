// What real files hold after the worst has happened to a program that saves its passages.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <random>
#include <thread>

#include "personal/memory/writing_memory.h"
#include "platform/scripted/storage/memory_secret_store.h"
#include "platform/scripted/system/recording_system_log.h"
#include "platform/scripted/system/scripted_background_work.h"
#include "platform/scripted/system/virtual_main_loop.h"
#include "platform/storage/atomic_file.h"
#include "tools/stage/temporary_folder.h"

namespace nimbletype {
namespace {

namespace fs = std::filesystem;

// The memory over a real file, with a key that is always the same.
struct Writer {
  explicit Writer(const fs::path& path) : file(path) {
    secrets.secrets[MemoryVault::account] = std::string(sealingKeySize, 'k');
    memory.load();
    settle();
  }
  void settle() { loop.advance(WritingMemory::saveDelay); }
  // Leaves nothing but passages of this generation.
  bool save(int generation, int count) {
    memory.forget("app:a");
    for (int i = 0; i < count; ++i) memory.remember(passage(generation, i), "app:a", loop.wallNow());
    settle();
    return memory.state() == MemoryState{MemoryState::Case::ready, ""};
  }
  static std::string passage(int generation, int i) {
    return std::to_string(i) + " in a text of generation " + std::to_string(generation) + ", and so on";
  }

  VirtualMainLoop loop;
  AtomicFile file;
  MemorySecretStore secrets{loop};
  ScriptedBackgroundWork background{loop};
  RecordingSystemLog log;
  WritingMemory memory{{file, secrets, background, loop, log}};
};

constexpr int passagesOfAFile = 200;

// The generation that the file holds from the first to the last passage; none when it is anything else.
std::optional<int> wholeGeneration(const fs::path& path) {
  const Writer reader(path);
  const auto& entries = reader.memory.entries();
  if (entries.size() != passagesOfAFile || !reader.memory.state().problem.empty()) return std::nullopt;
  const int generation = std::stoi(entries[0].text.substr(entries[0].text.find("generation ") + 11));
  for (int i = 0; i < passagesOfAFile; ++i)
    if (entries[static_cast<std::size_t>(i)].text != Writer::passage(generation, i)) return std::nullopt;
  return generation;
}

TEST(MemoryFile, IsWholeWheneverTheProgramIsKilled) {
  const TemporaryFolder folder;
  const fs::path path = folder.path / "memory.sealed";
  const auto start = std::chrono::steady_clock::now();
  ASSERT_TRUE(Writer(path).save(0, passagesOfAFile));
  const auto twoSaves = 2 * (std::chrono::steady_clock::now() - start);
  std::minstd_rand random(20250307);
  std::uniform_int_distribution<std::int64_t> anyMoment(0, twoSaves.count());
  int ready[2];
  ASSERT_EQ(pipe(ready), 0);
  int last = 0, moved = 0;
  for (int round = 0; round < 300; ++round) {
    const pid_t child = fork();
    if (child == 0) {
      Writer writer(path);
      if (write(ready[1], "!", 1) != 1) _exit(1);
      for (int generation = last + 1;; ++generation) writer.save(generation, passagesOfAFile);
    }
    char mark = 0;
    ASSERT_EQ(read(ready[0], &mark, 1), 1);
    std::this_thread::sleep_for(std::chrono::steady_clock::duration(anyMoment(random)));
    kill(child, SIGKILL);
    int status = 0;
    waitpid(child, &status, 0);
    ASSERT_TRUE(WIFSIGNALED(status));
    const auto generation = wholeGeneration(path);
    ASSERT_TRUE(generation) << "in round " << round;
    ASSERT_GE(*generation, last);
    moved += *generation > last;
    last = *generation;
  }
  EXPECT_GT(moved, 10) << "hardly any child lived long enough to save";
}

// No file may grow beyond a certain size, as if the disk were full.
TEST(MemoryFile, AFullDiskKeepsTheOldOneWhole) {
  const TemporaryFolder folder;
  const fs::path path = folder.path / "memory.sealed";
  rlimit before{};
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
  const rlimit small{65536, before.rlim_max};
  const auto ignored = signal(SIGXFSZ, SIG_IGN);
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
  Writer writer(path);
  EXPECT_TRUE(writer.save(1, passagesOfAFile));
  EXPECT_FALSE(writer.save(2, 10 * passagesOfAFile));
  EXPECT_FALSE(writer.memory.state().problem.empty());
  EXPECT_EQ(wholeGeneration(path), 1);
  EXPECT_TRUE(writer.save(3, passagesOfAFile));
  EXPECT_EQ(wholeGeneration(path), 3);
  setrlimit(RLIMIT_FSIZE, &before);
  signal(SIGXFSZ, ignored);
}

// Every damage leads to an empty memory and keeps the damaged file beside the new one.
TEST(MemoryFile, DamagedOnesAreKeptBesideTheNewOne) {
  const TemporaryFolder folder;
  const fs::path path = folder.path / "memory.sealed", aside = folder.path / "memory.sealed.unreadable";
  ASSERT_TRUE(Writer(path).save(1, passagesOfAFile));
  const std::string good = *AtomicFile(path).read();
  std::string flipped = good;
  flipped[good.size() / 2] ^= 1;
  const std::string damaged[] = {"", "not sealed at all", good + good, good.substr(0, good.size() / 2),
                                 flipped};
  for (const std::string& content : damaged) {
    AtomicFile(path).write(content);
    Writer writer(path);
    EXPECT_EQ(writer.memory.count(), 0U);
    EXPECT_TRUE(writer.save(2, passagesOfAFile) || !writer.memory.state().problem.empty());
    EXPECT_EQ(AtomicFile(aside).read(), content);
    EXPECT_EQ(wholeGeneration(path), 2);
    fs::remove(aside);
  }
  EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

}  // namespace
}  // namespace nimbletype
