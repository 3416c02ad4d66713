#include "platform/linux/system/autostart_login_item.h"

#include <gio/gdesktopappinfo.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "platform/linux/bus/glib_handle.h"
#include "tests/platform/system/login_item_conformance.h"
#include "tools/stage/temporary_folder.h"
#include "tools/stage/waiting.h"

namespace nimbletype {
namespace {

namespace fs = std::filesystem;

constexpr uid_t nobody = 65534;

struct AutostartHarness {
  ~AutostartHarness() {
    EXPECT_EQ(seteuid(user), 0);
    fs::permissions(folder.path / "config", fs::perms::owner_all);
  }
  LoginItem& item() { return autostart; }
  // A folder that may not be written, by somebody to whom that matters.
  void refuse() {
    fs::permissions(folder.path, fs::perms::all);
    fs::permissions(folder.path / "config/nimbletype.desktop", fs::perms::all);
    fs::permissions(folder.path / "config", fs::perms{0555});
    EXPECT_EQ(seteuid(user == 0 ? nobody : user), 0);
  }

  uid_t user = geteuid();
  TemporaryFolder folder;
  AutostartLoginItem autostart{folder.path / "config", "/bin/true"};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Autostart, LoginItemConformance, AutostartHarness);

TEST(AutostartLoginItem, SaysInTheSystemsWordsWhatItCannotDo) {
  const TemporaryFolder folder;
  std::ofstream(folder.path / "file") << "";
  EXPECT_EQ(AutostartLoginItem(folder.path / "file", "/bin/true").set(true).error(),
            (folder.path / "file/nimbletype.desktop").string() + ": Not a directory");
}

TEST(AutostartLoginItem, HonoursWhatOthersWroteIntoItsFile) {
  const TemporaryFolder folder;
  const AutostartLoginItem item(folder.path, "/bin/true");
  const std::string start = "[Desktop Entry]\nType=Application\nName=Nimbletype\nExec=nimbletype\n";
  const std::vector<std::pair<std::string, bool>> files{{start, true},
                                                        {start + "Hidden=true\n", false},
                                                        {start + "Hidden=false\n", true},
                                                        {start + "X-GNOME-Autostart-enabled=false\n", false},
                                                        {start + "OnlyShowIn=Elsewhere;\n", true},
                                                        {start + "TryExec=/nowhere/nimbletype\n", false},
                                                        {"[Desktop Entry]\nType=Application\n", false},
                                                        {"no desktop file", false}};
  for (const auto& [content, isOn] : files) {
    std::ofstream(folder.path / "nimbletype.desktop") << content;
    EXPECT_EQ(item.isOn(), isOn) << content;
  }
}

TEST(AutostartLoginItem, WritesAFileThatStartsTheProgramWhateverItsName) {
  const TemporaryFolder folder;
  const fs::path program = folder.path / "it's \"My\" $HOME `app` \\ back;&", mark = folder.path / "started";
  std::ofstream(program) << "#!/bin/sh\n[ $# = 0 ] && echo >\"" << mark.string() << "\"\n";
  fs::permissions(program, fs::perms::owner_all);
  AutostartLoginItem item(folder.path / "autostart", program);
  ASSERT_TRUE(item.set(true).has_value());
  EXPECT_TRUE(item.isOn());
  const std::string file = folder.path / "autostart/nimbletype.desktop";
  EXPECT_EQ(std::system(("desktop-file-validate " + file).c_str()), 0);
  const GObjectPtr<GDesktopAppInfo> entry(g_desktop_app_info_new_from_filename(file.c_str()));
  ASSERT_TRUE(entry);
  ASSERT_TRUE(g_app_info_launch(G_APP_INFO(entry.get()), nullptr, nullptr, nullptr));
  waitFor("the program's mark", [&] { return fs::exists(mark); });
}

}  // namespace
}  // namespace nimbletype
