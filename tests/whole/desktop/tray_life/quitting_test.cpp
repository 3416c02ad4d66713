#include <cstdlib>
#include <fstream>

#include "tests/whole/desktop/tray_life/application_user.h"

namespace nimbletype {
namespace {

namespace fs = std::filesystem;

bool contains(const fs::path& file, const char* words) {
  std::ifstream stream(file);
  return std::string(std::istreambuf_iterator<char>(stream), {}).find(words) != std::string::npos;
}

// A session that ends gives its programs little time.
using Quitting = ApplicationOnTheDesktop;

TEST_F(Quitting, InTheMidstOfWorkItGivesTheKeysBack) {
  start();
  EXPECT_EQ(end(scene_->application()), 0);
  expectThatTabArrives();
}

TEST_F(Quitting, DoesNotWaitForTheModelToBeLoaded) {
  const ScratchFolder folder;
  const fs::path model = folder.path() / "slow.gguf", log = folder.path() / "log";
  const std::string make =
      "python3 tools/models/slow_model.py " STARTER_MODEL " " + model.string() + " --layers 500";
  ASSERT_EQ(std::system(make.c_str()), 0);
  ChildProcess application({{programs() / "nimbletype", "--verbose", "--model", model}, {}, log});
  waitFor("the application", [&] { return contains(log, "Nimbletype is ready"); });
  EXPECT_EQ(end(application), 0);
  EXPECT_FALSE(contains(log, "loaded a model")) << "it takes no time here";
}

// Whatever crashed, the session goes on: so do the windows, the tray's item and the keys.
TEST_F(Quitting, OutlivesTheSessionBus) {
  const ScratchFolder folder;
  const std::string address = "unix:path=" + (folder.path() / "bus").string();
  // Without the display, at which its accessibility bus would take the place of the desktop's own.
  ChildProcess bus({{"dbus-daemon", "--session", "--nofork", "--address=" + address},
                    {{"DISPLAY", ""}},
                    folder.path() / "bus.log"});
  waitFor("the bus", [&] { return fs::exists(folder.path() / "bus"); });
  const auto start = [&](const char* log) {
    return ChildProcess(
        {{programs() / "nimbletype"}, {{"DBUS_SESSION_BUS_ADDRESS", address}}, folder.path() / log});
  };
  ChildProcess application = start("first.log");
  waitFor("the application", [&] { return contains(folder.path() / "first.log", "Nimbletype is ready"); });
  bus.signal(SIGKILL);
  waitFor("the bus to be gone", [&] { return !bus.isRunning(); });
  ChildProcess another = start("second.log");
  waitFor("the settings of the first", [&] { return titled("Settings", application).has_value(); });
  waitFor("the second to end", [&] { return !another.isRunning(); });
  EXPECT_EQ(another.exitStatus(), 0);
  EXPECT_EQ(end(application), 0);
}

}  // namespace
}  // namespace nimbletype
