#include "tools/nimbletype-demo/resources.h"

#include <cstdio>
#include <sstream>

namespace nimbletype {
namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;

constexpr std::chrono::seconds idleTime = 10s;

// The number in a line such as "VmRSS:   1234 kB".
long numberIn(const fs::path& statusFile, const std::string& name) {
  std::ifstream lines(statusFile);
  for (std::string line; std::getline(lines, line);)
    if (line.starts_with(name + ":")) return std::strtol(line.c_str() + name.size() + 1, nullptr, 10);
  return 0;
}

fs::path folderOf(pid_t process) {
  return fs::path("/proc") / std::to_string(process);
}

std::vector<pid_t> childrenOf(pid_t parent) {
  std::vector<pid_t> children;
  for (const auto& entry : fs::directory_iterator("/proc")) {
    const pid_t process = std::atoi(entry.path().filename().c_str());
    if (process > 0 && numberIn(entry.path() / "status", "PPid") == parent) children.push_back(process);
  }
  return children;
}

// How often its threads have gone to sleep of their own accord.
long sleepsOf(pid_t process) {
  long total = 0;
  for (const auto& thread : fs::directory_iterator(folderOf(process) / "task"))
    total += numberIn(thread.path() / "status", "voluntary_ctxt_switches");
  return total;
}

std::string nameOf(pid_t process) {
  std::string name;
  std::getline(std::ifstream(folderOf(process) / "comm") >> std::ws, name);
  return name;
}

void printMemory(pid_t process, const char* when) {
  const auto status = folderOf(process) / "status";
  std::printf("%-16s %-28s resident %6.1f MB, of it its own %6.1f MB\n", nameOf(process).c_str(), when,
              static_cast<double>(numberIn(status, "VmRSS")) / 1024,
              static_cast<double>(numberIn(status, "RssAnon")) / 1024);
}

void printFamily(pid_t application, const char* when) {
  std::vector<pid_t> family = childrenOf(application);
  family.insert(family.begin(), application);
  for (const pid_t process : family) printMemory(process, when);
  std::vector<long> before;
  before.reserve(family.size());
  for (const pid_t process : family) before.push_back(sleepsOf(process));
  rest(idleTime);
  for (std::size_t i = 0; i < family.size(); ++i)
    std::printf("%-16s %-28s wakes up %.1f times a second\n", nameOf(family[i]).c_str(), when,
                static_cast<double>(sleepsOf(family[i]) - before[i]) / static_cast<double>(idleTime.count()));
}

}  // namespace

void measureResources(const Scene::Cast& cast) {
  {
    Scene::Cast withoutModel = cast;
    withoutModel.model.clear();
    Scene scene(withoutModel);
    std::printf("start to ready, without a model: %ld ms\n",
                static_cast<long>(scene.startApplication().count()));
    rest(2s);
    printFamily(scene.application().processID(), "without a model");
  }
  if (cast.model.empty()) return;
  Scene scene(cast);
  std::printf("start to ready, with a model: %ld ms\n", static_cast<long>(scene.startApplication().count()));
  scene.typeUntilGhost([](const std::string&) {});
  rest(2s);
  printFamily(scene.application().processID(), "with a ghost on screen");
}

}  // namespace nimbletype
