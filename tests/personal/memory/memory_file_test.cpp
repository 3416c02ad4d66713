// What real files hold after the worst has happened to a program that saves its passages.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#ifdef __linux__
#include <sched.h>
#include <sys/mount.h>
#endif

#include <chrono>
#include <cstdio>
#include <fstream>
#include <random>
#include <thread>

#include "personal/memory/writing_memory.h"
#include "platform/scripted/storage/memory_secret_store.h"
#include "platform/scripted/system/recording_system_log.h"
#include "platform/scripted/system/scripted_background_work.h"
#include "platform/scripted/system/virtual_main_loop.h"
#include "platform/storage/atomic_file.h"
#include "tests/platform/storage/temporary_folder.h"

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

// Runs `work` in a process of its own, which it must not outlive.
template <typename Work>
pid_t inChild(const Work& work) {
  const pid_t child = fork();
  if (child == 0) _exit(work());
  return child;
}

int statusOf(pid_t child) {
  int status = 0;
  waitpid(child, &status, 0);
  return status;
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
    const pid_t child = inChild([&] {
      Writer writer(path);
      if (write(ready[1], "!", 1) != 1) return 1;
      for (int generation = last + 1;; ++generation) writer.save(generation, passagesOfAFile);
      return 0;
    });
    char mark = 0;
    ASSERT_EQ(read(ready[0], &mark, 1), 1);
    std::this_thread::sleep_for(std::chrono::steady_clock::duration(anyMoment(random)));
    kill(child, SIGKILL);
    ASSERT_TRUE(WIFSIGNALED(statusOf(child)));
    const auto generation = wholeGeneration(path);
    ASSERT_TRUE(generation) << "in round " << round;
    ASSERT_GE(*generation, last);
    moved += *generation > last;
    last = *generation;
  }
  EXPECT_GT(moved, 10) << "hardly any child lived long enough to save";
}

#ifdef __linux__
// A file system of a few blocks, for this process alone.
bool mountTiny(const fs::path& folder) {
  const auto uid = getuid();
  const auto gid = getgid();
  if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) return false;
  std::ofstream("/proc/self/setgroups") << "deny";
  std::ofstream("/proc/self/uid_map") << "0 " << uid << " 1";
  std::ofstream("/proc/self/gid_map") << "0 " << gid << " 1";
  return mount("tmpfs", folder.c_str(), "tmpfs", 0, "size=64k,mode=700") == 0;
}
#else
bool mountTiny(const fs::path&) {
  return false;
}
#endif

// Where no file system can be mounted, no file may grow beyond the same size.
bool makeTiny(const fs::path& folder) {
  if (mountTiny(folder)) return true;
  signal(SIGXFSZ, SIG_IGN);
  const rlimit limit{65536, 65536};
  return setrlimit(RLIMIT_FSIZE, &limit) != 0;
}

TEST(MemoryFile, AFullDiskKeepsTheOldOneWhole) {
  const TemporaryFolder folder;
  const fs::path path = folder.path / "memory.sealed";
  const int status = statusOf(inChild([&] {
    const bool mounted = makeTiny(folder.path);
    std::printf("the disk is full by %s\n", mounted ? "a small file system" : "a limit on the size of files");
    std::fflush(stdout);
    Writer writer(path);
    if (!writer.save(1, passagesOfAFile)) return 1;
    if (writer.save(2, 10 * passagesOfAFile)) return 2;
    if (wholeGeneration(path) != 1) return 3;
    if (writer.memory.state().problem.empty()) return 4;
    return writer.save(3, passagesOfAFile) && wholeGeneration(path) == 3 ? 0 : 5;
  }));
  ASSERT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), 0);
}

// Every damage leads to an empty memory and keeps the damaged file beside the new one.
TEST(MemoryFile, DamagedOnesAreKeptBesideTheNewOne) {
  const TemporaryFolder folder;
  const fs::path path = folder.path / "memory.sealed", aside = folder.path / "memory.sealed.unreadable";
  ASSERT_TRUE(Writer(path).save(1, passagesOfAFile));
  const std::string good = *AtomicFile(path).read();
  std::minstd_rand random(7);
  std::vector<std::string> damaged{"", "not sealed at all", good + good, std::string(good.size(), '\0')};
  for (int i = 0; i < 40; ++i) {
    damaged.push_back(good.substr(0, random() % good.size()));
    damaged.push_back(good);
    damaged.back()[random() % good.size()] ^= static_cast<char>(1 << random() % 8);
  }
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
