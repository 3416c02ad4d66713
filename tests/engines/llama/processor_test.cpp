#include "engines/llama/processor.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <tuple>

#include "tools/stage/temporary_folder.h"

namespace nimbletype {
namespace {

std::vector<LogicalProcessor> cores(int count, int threadsEach, int speed, int firstCore = 0) {
  std::vector<LogicalProcessor> all;
  for (int core = 0; core < count; ++core)
    for (int thread = 0; thread < threadsEach; ++thread) all.push_back({0, firstCore + core, speed});
  return all;
}

std::vector<LogicalProcessor> joined(std::vector<LogicalProcessor> a,
                                     const std::vector<LogicalProcessor>& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

TEST(Processor, OneThreadForEachFastCore) {
  constexpr std::uint64_t large = 2'000'000'000;
  const std::tuple<const char*, ProcessorLayout, std::uint64_t, int> cases[] = {
      {"nothing known", {}, large, 1},
      {"two cores", {cores(2, 1, 0)}, large, 2},
      {"two cores, two threads each", {cores(2, 2, 3000)}, large, 2},
      {"four fast, four saving", {joined(cores(4, 1, 1024), cores(4, 1, 400, 4))}, large, 4},
      {"six fast of two threads, eight saving", {joined(cores(6, 2, 5000), cores(8, 1, 3600, 6))}, large, 6},
      {"turbo differences are no kinds", {joined(cores(2, 1, 5200), cores(2, 1, 5000, 2))}, large, 4},
      {"sixteen", {cores(16, 1, 0)}, large, 8},
      {"a container of a large machine", {cores(16, 1, 0), 1.5}, large, 2},
      {"a tiny model", {cores(8, 1, 0)}, 4'000'000, 1},
      {"a small model", {cores(8, 1, 0)}, 100'000'000, 3},
      {"two sockets", {{{0, 0, 0}, {0, 1, 0}, {1, 0, 0}, {1, 1, 0}}}, large, 4}};
  for (const auto& [name, layout, bytes, threads] : cases)
    EXPECT_EQ(threadsFor(layout, bytes), threads) << name;
}

TEST(Processor, ACrowdedMachineGetsOneThreadUntilThereIsRoom) {
  EXPECT_EQ(threadsAfter(0.3, 4, 4), 1);
  EXPECT_EQ(threadsAfter(0.8, 1, 4), 1);
  EXPECT_EQ(threadsAfter(0.95, 1, 4), 4);
  EXPECT_EQ(threadsAfter(0.8, 4, 4), 4);
}

TEST(Processor, ReadsTheSystemsDescription) {
  namespace fs = std::filesystem;
  const TemporaryFolder folder;
  const auto root = folder.path / "sys";
  const auto write = [&](const std::string& path, const std::string& content) {
    fs::create_directories((root / path).parent_path());
    std::ofstream(root / path) << content;
  };
  for (int i = 0; i < 3; ++i) {
    const auto cpu = "devices/system/cpu/cpu" + std::to_string(i);
    write(cpu + "/topology/core_id", std::to_string(i / 2) + "\n");
    write(cpu + "/topology/physical_package_id", "0\n");
    write(cpu + "/cpufreq/cpuinfo_max_freq", "4000000\n");
  }
  write("devices/system/cpu/cpu2/online", "0\n");
  write("devices/system/cpu/cpu3/cpu_capacity", "1024\n");
  write("fs/cgroup/cpu.max", "150000 100000\n");
  const auto layout = readProcessorLayout(root.string());
  EXPECT_EQ(layout.processors,
            (std::vector<LogicalProcessor>{{0, 0, 4000000}, {0, 0, 4000000}, {0, 3, 1024}}));
  EXPECT_EQ(layout.allowance, 1.5);
  write("fs/cgroup/cpu.max", "max 100000\n");
  EXPECT_EQ(readProcessorLayout(root.string()).allowance, 0);
  fs::remove_all(root);
  EXPECT_EQ(readProcessorLayout(root.string()), ProcessorLayout{});
}

}  // namespace
}  // namespace nimbletype
