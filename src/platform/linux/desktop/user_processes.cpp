#include "platform/linux/desktop/user_processes.h"

#include <sys/stat.h>
#include <unistd.h>

#include <charconv>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string_view>
#include <utility>

#include "platform/linux/desktop/program_name.h"

namespace nimbletype {
namespace {

namespace fs = std::filesystem;

fs::path folderOf(pid_t process) {
  return fs::path("/proc") / std::to_string(process);
}

std::string contentOf(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

// A program that was replaced by a newer one is still called what it was.
std::string executablePathOf(pid_t process) {
  constexpr std::string_view replaced = " (deleted)";
  std::error_code error;
  std::string path = fs::read_symlink(folderOf(process) / "exe", error).string();
  if (path.ends_with(replaced)) path.erase(path.size() - replaced.size());
  return path;
}

bool isOurUsers(pid_t process) {
  struct stat status {};
  return ::stat(folderOf(process).c_str(), &status) == 0 && status.st_uid == getuid();
}

// Behind the program's name, which may hold anything: ") S 1234 ...".
pid_t parentOf(pid_t process) {
  const std::string status = contentOf(folderOf(process) / "stat");
  const std::size_t end = status.rfind(')');
  pid_t parent = 0;
  if (end != std::string::npos && end + 4 < status.size())
    std::from_chars(status.data() + end + 4, status.data() + status.size(), parent);
  return parent;
}

// Texts that each end with a NUL.
std::vector<std::string> wordsIn(const fs::path& file) {
  std::vector<std::string> words;
  const std::string line = contentOf(file);
  for (std::size_t at = 0; at < line.size(); at += words.back().size() + 1)
    words.emplace_back(line.c_str() + at);
  return words;
}

// ":0" of ":0.1": all of a display's screens are one session.
std::string_view displayIn(std::string_view name) {
  return name.substr(0, name.find('.', name.rfind(':') == name.npos ? 0 : name.rfind(':')));
}

// The user may be at another display as well.
bool isAtAnotherDisplay(pid_t process) {
  constexpr std::string_view variable = "DISPLAY=";
  const char* ours = std::getenv("DISPLAY");
  for (const std::string& word : wordsIn(folderOf(process) / "environ"))
    if (word.starts_with(variable))
      return displayIn(std::string_view(word).substr(variable.size())) != displayIn(ours ? ours : "");
  return false;
}

// What a process calls itself may be anything, but is also the name of a link that it was started by.
UserProcess describe(pid_t process, std::string executable) {
  UserProcess described{parentOf(process), std::move(executable), {}};
  auto words = wordsIn(folderOf(process) / "cmdline");
  if (words.empty() || isAtAnotherDisplay(process)) return described;
  described.programs.push_back(programStartedBy(words));
  words[0] = described.executable;
  described.programs.insert(described.programs.begin(), programStartedBy(words));
  return described;
}

std::optional<RunningApp> match(pid_t process, const UserProcess& described, DesktopEntries& entries) {
  for (const auto& program : described.programs)
    if (const auto entry = entries.startedBy(program)) return runningApp(process, *entry);
  return std::nullopt;
}

// Calls `visit` with every process above this one until it returns false.
template <typename Visit>
void climb(const ProcessTable& processes, pid_t process, const Visit& visit) {
  std::set<pid_t> seen;
  for (auto at = processes.find(process); at != processes.end() && seen.insert(at->first).second;
       at = processes.find(at->second.parent))
    if (at->first != process && !visit(at->first)) return;
}

}  // namespace

const ProcessTable& UserProcesses::look() {
  ProcessTable now;
  std::error_code error;
  for (const auto& folder : fs::directory_iterator("/proc", error)) {
    const std::string name = folder.path().filename();
    pid_t process = 0;
    if (std::from_chars(name.data(), name.data() + name.size(), process).ptr != name.data() + name.size())
      continue;
    std::string executable = executablePathOf(process);
    if (executable.empty() || !isOurUsers(process)) continue;
    const auto known = known_.find(process);
    now.emplace(process, known != known_.end() && known->second.executable == executable
                             ? std::move(known->second)
                             : describe(process, std::move(executable)));
  }
  known_ = std::move(now);
  return known_;
}

std::string executableOf(pid_t process) {
  return fs::path(executablePathOf(process)).filename();
}

RunningApp runningApp(pid_t process, const DesktopEntry& entry) {
  return {process, entry.id, entry.name, {}, entry.isTerminal, process == getpid(), entry.icon};
}

std::map<pid_t, RunningApp> applicationsAmong(const ProcessTable& processes,
                                              const std::map<pid_t, RunningApp>& windowed,
                                              DesktopEntries& entries) {
  std::map<pid_t, RunningApp> found;
  for (const auto& [process, described] : processes) {
    if (const auto window = windowed.find(process); window != windowed.end())
      found.insert(*window);
    else if (const auto app = match(process, described, entries))
      found.emplace(process, *app);
  }
  std::set<pid_t> others;  // of an application that another process stands for
  for (const auto& [process, app] : found)
    climb(processes, process, [&](pid_t above) {
      const auto same = found.find(above);
      if (same == found.end() || same->second.bundleID != app.bundleID) return true;
      if (!windowed.contains(process))
        others.insert(process);
      else if (!windowed.contains(above))
        others.insert(above);
      return windowed.contains(process);
    });
  std::erase_if(found, [&](const auto& entry) { return others.contains(entry.first); });
  return found;
}

}  // namespace nimbletype
