#include "platform/linux/desktop/user_processes.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include "platform/linux/desktop/program_name.h"
#include "tools/stage/desktop_session.h"
#include "tools/stage/temporary_folder.h"
#include "tools/stage/waiting.h"

namespace nimbletype {
namespace {

TEST(ProgramName, IsWhatACommandLineStarts) {
  const std::vector<std::pair<std::vector<std::string>, std::string>> lines{
      {{"/opt/My App/my-app", "--new", "file"}, "my-app"},
      {{"env", "-u", "A=1", "B=2", "/usr/bin/app"}, "app"},
      {{"/usr/bin/python3.11", "-u", "/usr/bin/script", "x"}, "script"},
      {{"python3", "-m", "package"}, "package"},
      {{"bash", "-c", "app"}, ""},
      {{"-bash"}, "-bash"},
      {{"/bin/bash"}, ""},
      {{"/usr/bin/flatpak", "run", "--command=app", "org.example.App"}, "app"},
      {{"env", "A=1"}, ""},
      {{""}, ""},
      {{}, ""}};
  for (const auto& [words, program] : lines)
    EXPECT_EQ(programStartedBy(words), program) << (words.empty() ? "" : words[0]);
}

// Names the installed applications of a folder that stands for the user's.
class Installed {
 public:
  Installed() {
    setenv("XDG_DATA_HOME", folder_.path.c_str(), 1);
    std::filesystem::create_directory(folder_.path / "applications");
    install("org.example.Browser", "Exec=sh -c true\nTryExec=true");
    install("org.example.settings", "Exec=true --settings");
    install("org.example.true", "Exec=/bin/true %U\nName[xx]=Another");
    install("terminal-tool", "Exec=false\nTerminal=true");
  }

 private:
  void install(const std::string& id, const std::string& lines) {
    std::ofstream(folder_.path / "applications" / (id + ".desktop"))
        << "[Desktop Entry]\nType=Application\nName=" << id << "\nIcon=picture\n"
        << lines << "\n";
  }
  TemporaryFolder folder_;
};

TEST(UserProcesses, StandForAnApplicationOnce) {
  const Installed installed;
  DesktopEntries entries;
  const auto process = [](pid_t parent, const std::string& program) {
    return UserProcess{parent, "/bin/" + program, {program}};
  };
  const ProcessTable processes{
      {10, process(1, "sh")},     // a login shell
      {11, process(10, "true")},  // an application, its helper's helper among its descendants
      {12, process(11, "sh")},    {13, process(12, "true")},
      {20, process(1, "true")},  // started once more: a script whose child has the window
      {21, process(20, "true")},  {22, process(20, "true")},
      {30, process(10, "false")},  // in a terminal
      {40, process(41, "true")}};  // of a parent that is gone
  const auto found =
      applicationsAmong(processes, {{21, runningApp(21, *entries.startedBy("true"))}}, entries);
  std::vector<pid_t> ids;
  for (const auto& [id, app] : found) {
    ids.push_back(id);
    EXPECT_EQ(app, (RunningApp{id, "org.example.true", "org.example.true", {}, false, false, "picture"}));
  }
  EXPECT_EQ(ids, (std::vector<pid_t>{11, 21, 40}));
}

TEST(UserProcesses, AreOfNoConcernAtAnotherDisplay) {
  setenv("DISPLAY", ":4711.1", 1);
  UserProcesses processes;
  for (const auto& [display, concerns] :
       {std::pair{":4711", true}, {":4711.0", true}, {":4712", false}, {"elsewhere:4711", false}}) {
    const DesktopProgram program({"env", "DISPLAY=" + std::string(display), "sleep", "infinity"});
    const auto found = [&] {
      const ProcessTable& all = processes.look();
      const auto at = all.find(program.processID());
      return at == all.end() ? UserProcess{} : at->second;
    };
    waitFor("the program", [&] { return found().executable.ends_with("sleep"); });
    EXPECT_EQ(!found().programs.empty(), concerns) << display;
  }
}

}  // namespace
}  // namespace nimbletype
