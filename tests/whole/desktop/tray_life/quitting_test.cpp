#include <cstdlib>
#include <fstream>

#include "engines/store/model_spec.h"
#include "tests/whole/desktop/tray_life/application_user.h"
#include "tools/stage/servers/https_file_server.h"

namespace nimbletype {
namespace {

using testing::EndsWith;
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

TEST_F(Quitting, KeepsWhatWasFetchedOfTheModelForTheNextTime) {
  const ScratchFolder folder;
  const ModelSpec model = builtInModel("");
  const fs::path served = folder.path() / model.address.substr(1), data = folder.path() / "Nimbletype",
                 part = data / "Models" / (".partial-" + model.fileName);
  fs::create_directories(served.parent_path());
  fs::create_directories(part.parent_path());
  std::ofstream{served};
  fs::resize_file(served, static_cast<std::uintmax_t>(model.size));
  const HttpsFileServer server(folder.path());
  std::ofstream(data / "settings.json") << R"({"modelHub":")" << server.url("/slow/2m") << "\"}";
  std::uintmax_t held = 0;
  for (std::size_t round = 1; round <= 2; ++round) {
    const std::uintmax_t before = held;
    ChildProcess application({{programs() / "fetching"},
                              {{"XDG_DATA_HOME", folder.path()}, {"SSL_CERT_FILE", server.authority()}},
                              folder.path() / "log"});
    waitFor("more of the model", [&] { return fs::exists(part) && fs::file_size(part) > before; });
    EXPECT_EQ(end(application), 0);
    held = fs::file_size(part);
    waitFor("the end of the transfer", [&] { return server.log().size() == round; });
    const std::string range = before == 0 ? "-" : "bytes=" + std::to_string(before) + '-';
    EXPECT_THAT(server.log().back(), EndsWith(' ' + range));
  }
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
