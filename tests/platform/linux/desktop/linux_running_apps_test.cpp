#include "platform/linux/desktop/linux_running_apps.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "platform/linux/desktop/x11_workspace.h"
#include "tests/platform/desktop/running_apps_conformance.h"
#include "tests/platform/linux/accessibility/editor_world.h"

namespace nimbletype::conformance {
namespace {

namespace fs = std::filesystem;

// Installs what it launches: programs without windows, one of them a script that takes no hint.
class InstalledApps final : public RunningAppsWorld {
 public:
  InstalledApps() {
    if (!DesktopSession::start()) return;
    apps_ = std::make_unique<LinuxRunningApps>(std::make_shared<DesktopEntries>(), Milliseconds(100));
  }
  RunningApps& apps() override { return *apps_; }
  std::int64_t launch(const std::string& name, bool refusesToQuit) override {
    const fs::path home(getenv("HOME")), program = home / (refusesToQuit ? "stubborn-words" : "plain-words");
    fs::remove(home / "ready");
    if (refusesToQuit)
      std::ofstream(program) << "#!/bin/sh\ntrap '' TERM\necho ready >" << home.string()
                             << "/ready\nwhile :; do sleep 1; done\n";
    else if (!fs::exists(program))
      fs::copy_file("/bin/sleep", program);
    fs::permissions(program, fs::perms::owner_all);
    const fs::path entries = home / ".local/share/applications";
    fs::create_directories(entries);
    std::ofstream(entries / (program.filename().string() + ".desktop"))
        << "[Desktop Entry]\nType=Application\nName=" << name << "\nIcon=words\nExec=\"" << program.string()
        << "\" infinity\n";
    programs_.push_back(std::make_unique<DesktopProgram>(std::vector<std::string>{program, "infinity"}));
    if (refusesToQuit) waitFor("the script's trap", [&] { return fs::exists(home / "ready"); });
    return programs_.back()->processID();
  }
  void waitFor(const std::string& what, const std::function<bool()>& condition) override {
    nimbletype::waitFor(what, condition);
  }

 private:
  std::unique_ptr<LinuxRunningApps> apps_;
  std::vector<std::unique_ptr<DesktopProgram>> programs_;
};

INSTANTIATE_TEST_SUITE_P(Linux, RunningAppsConformance,
                         testing::Values(&makeRunningAppsWorld<InstalledApps>));

// Nothing is looked for in the meantime: the desktop and the process tell.
TEST(LinuxRunningApps, HearsOfWindowsAndKnowsThemAsTheWorkspaceDoes) {
  ASSERT_TRUE(DesktopSession::start());
  const auto entries = std::make_shared<DesktopEntries>();
  X11Workspace workspace(entries);
  LinuxRunningApps apps(entries, std::chrono::hours(1));
  int told = 0;
  apps.onChange([&] { ++told; });
  const OpenEditor editor("mousepad", "text");
  const auto isIt = [&](const RunningApp& app) { return app.processID == editor.processID(); };
  waitFor("word of the editor", [&] { return told > 0; });
  waitFor("the editor in front", [&] { return isIt(workspace.frontmost().value_or(RunningApp{})); });
  const RunningApp front = *workspace.frontmost();
  const auto running = apps.all();
  EXPECT_EQ(front.icon, "org.xfce.mousepad");
  EXPECT_EQ(std::ranges::count(running, front), 1);
  EXPECT_EQ(std::ranges::count_if(running, isIt), 1);
  EXPECT_EQ(std::ranges::count_if(running, &RunningApp::isOurs), 1);
  const int before = told;
  apps.quit(front, RunningApps::Quit::polite);
  waitFor("word of its end", [&] { return told > before && std::ranges::none_of(apps.all(), isIt); });
}

}  // namespace
}  // namespace nimbletype::conformance
