#include <cstdlib>
#include <fstream>

#include "tests/whole/desktop/tray_life/application_user.h"

namespace nimbletype {
namespace {

using testing::HasSubstr;
namespace fs = std::filesystem;

std::string contentOf(const fs::path& file) {
  std::ifstream stream(file);
  return {std::istreambuf_iterator<char>(stream), {}};
}

struct Ended {
  std::optional<int> status;
  std::string said;
};

class Starting : public ApplicationOnTheDesktop {
 protected:
  Ended startAnother(std::vector<std::string> words,
                     const std::map<std::string, std::string>& environment = {}) {
    const fs::path log = folder_.path() / "another.log";
    words.insert(words.begin(), programs() / "nimbletype");
    ChildProcess another({words, environment, log});
    waitFor("the other start to end", [&] { return !another.isRunning(); });
    return {another.exitStatus(), contentOf(log)};
  }

  ScratchFolder folder_;
};

TEST_F(Starting, AgainOpensTheSettingsOfTheFirst) {
  scene_->startApplication();
  for (const auto& words : {std::vector<std::string>{}, {"--open-settings", "keys"}}) {
    EXPECT_EQ(startAnother(words).status, 0);
    waitFor("the settings", [this] { return titled("Settings").has_value(); });
    scene_->user().press(letterW, {ModifierSet::control});
    waitFor("the settings closed", [this] { return !titled("Settings"); });
  }
}

TEST_F(Starting, SaysInOneSentenceWhatItDoesNotKnow) {
  const Ended another = startAnother({"--foo"}, {{"DISPLAY", ":none"}});
  EXPECT_EQ(another.status, 2);
  EXPECT_THAT(another.said, HasSubstr("does not know \"--foo\""));
  EXPECT_EQ(std::ranges::count(another.said, '\n'), 1);
}

TEST_F(Starting, WithTheLoginIsSwitchedOnInTheSettings) {
  scene_->startApplication();
  startAnother({});
  waitFor("the settings", [this] { return titled("Settings").has_value(); });
  scene_->user().press(key::space);  // on the first switch
  const fs::path entry = fs::path(std::getenv("HOME")) / ".config/autostart/nimbletype.desktop";
  waitFor("the entry", [&] { return fs::exists(entry); });
  EXPECT_EQ(std::system(("desktop-file-validate " + entry.string()).c_str()), 0);
  EXPECT_EQ(end(scene_->application()), 0);

  const fs::path log = folder_.path() / "login.log";
  ChildProcess atLogin(
      {{"sh", "-c", "eval exec \"$(sed -n s/^Exec=//p '" + entry.string() + "')\""}, {}, log});
  waitFor("the application that the login starts",
          [&] { return contentOf(log).find("Nimbletype is ready") != std::string::npos; });
}

}  // namespace
}  // namespace nimbletype
