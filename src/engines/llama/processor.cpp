#include "engines/llama/processor.h"

#include <time.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <set>
#include <thread>
#include <utility>

#ifdef __APPLE__
#include <pthread.h>
#include <sys/sysctl.h>
#endif

namespace nimbletype {
namespace {

// Beyond these, more threads wait for memory and for one another, and the desktop has less to itself.
constexpr std::uint64_t mostThreads = 8;
// Threads meet after each step of an evaluation. With less to do between than this gives them, meeting costs
// more than it saves, and very much more while other programs keep the cores busy.
constexpr std::uint64_t bytesWorthAThread = 32'000'000;
// A core this much slower than the fastest is of the saving kind.
constexpr double fastShare = 0.75;

int readNumber(const std::string& path, int otherwise) {
  std::ifstream file(path);
  int number = otherwise;
  return file >> number ? number : otherwise;
}

double readAllowance(const std::string& path) {
  std::ifstream file(path);
  double quota = 0, period = 0;
  return file >> quota >> period && period > 0 ? quota / period : 0;
}

double seconds(clockid_t clock) {
  timespec now{};
  clock_gettime(clock, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

}  // namespace

int threadsFor(const ProcessorLayout& layout, std::uint64_t modelBytes) {
  int fastest = 0;
  for (const auto& each : layout.processors) fastest = std::max(fastest, each.speed);
  std::set<std::pair<int, int>> cores;
  for (const auto& each : layout.processors)
    if (each.speed >= fastShare * fastest) cores.emplace(each.package, each.core);
  std::uint64_t threads = cores.size();
  if (layout.allowance > 0)
    threads = std::min(threads, static_cast<std::uint64_t>(std::ceil(layout.allowance)));
  threads = std::min({threads, modelBytes / bytesWorthAThread, mostThreads});
  return static_cast<int>(std::max<std::uint64_t>(threads, 1));
}

int threadsAfter(double busyShare, int current, int most) {
  constexpr double crowded = 0.7, free = 0.9;
  if (busyShare < crowded) return 1;
  return busyShare > free ? most : current;
}

BusyClock::BusyClock() : wall_(seconds(CLOCK_MONOTONIC)), busy_(seconds(CLOCK_THREAD_CPUTIME_ID)) {}

double BusyClock::share() const {
  const double wall = seconds(CLOCK_MONOTONIC) - wall_;
  return wall > 0 ? (seconds(CLOCK_THREAD_CPUTIME_ID) - busy_) / wall : 1;
}

ProcessorLayout readProcessorLayout(const std::string& sys) {
  ProcessorLayout layout;
  const auto here = [&](int number) { return sys + "/devices/system/cpu/cpu" + std::to_string(number); };
  for (int number = 0; std::filesystem::exists(here(number)); ++number) {
    const auto folder = here(number);
    if (readNumber(folder + "/online", 1) == 0) continue;
    const int capacity = readNumber(folder + "/cpu_capacity", 0);
    layout.processors.push_back(
        {.package = readNumber(folder + "/topology/physical_package_id", 0),
         .core = readNumber(folder + "/topology/core_id", number),
         .speed = capacity > 0 ? capacity : readNumber(folder + "/cpufreq/cpuinfo_max_freq", 0)});
  }
  layout.allowance = readAllowance(sys + "/fs/cgroup/cpu.max");
  return layout;
}

#ifdef __APPLE__

ProcessorLayout readProcessorLayout() {
  ProcessorLayout layout;
  const auto count = [](const char* name) {
    int value = 0;
    std::size_t size = sizeof value;
    return sysctlbyname(name, &value, &size, nullptr, 0) == 0 ? value : 0;
  };
  // The first level is the fast one, where there are several.
  int cores = count("hw.perflevel0.physicalcpu");
  if (cores == 0) cores = count("hw.physicalcpu");
  for (int core = 0; core < cores; ++core) layout.processors.push_back({.core = core});
  return layout;
}

void beginModelThread() {
  pthread_setname_np("com.moravelle.nimbletype.llama");
  pthread_set_qos_class_self_np(QOS_CLASS_USER_INITIATED, 0);
}

#else

ProcessorLayout readProcessorLayout() {
  auto layout = readProcessorLayout(std::string("/sys"));
  const double available = std::thread::hardware_concurrency();
  if (available > 0)
    layout.allowance = layout.allowance > 0 ? std::min(layout.allowance, available) : available;
  return layout;
}

void beginModelThread() {}

#endif

}  // namespace nimbletype
