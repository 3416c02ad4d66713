#include <fstream>

#include "tests/whole/desktop/tray_life/application_user.h"

namespace nimbletype {
namespace {

const std::string paused = "Paused while Tab Type is open";

class Rivals : public ApplicationOnTheDesktop {
 protected:
  void SetUp() override {
    ApplicationOnTheDesktop::SetUp();
    const auto entries = scene_->dataFolder().parent_path() / "applications";
    std::filesystem::create_directories(entries);
    std::ofstream(entries / "rival.desktop")
        << "[Desktop Entry]\nType=Application\nName=Tab Type\nExec=" << (programs() / "rival").string()
        << '\n';
  }
  ChildProcess startRival(std::vector<std::string> options) const {
    options.insert(options.begin(), programs() / "rival");
    return ChildProcess({options, {}, scene_->dataFolder() / "rival.log"});
  }
};

TEST_F(Rivals, AreAskedToQuitAndSuggestionsComeBack) {
  scene_->setSettings(R"({"quitRivalsAutomatically":true})");
  start();
  ChildProcess rival = startRival({});
  awaitLog("rival app running, auto quit true");
  waitFor("the rival to quit", [&] { return !rival.isRunning(); });
  EXPECT_EQ(rival.exitStatus(), 0);
  typeUntilGhostIsBack();
  EXPECT_FALSE(titled("Nimbletype"));
}

TEST_F(Rivals, AreForcedToQuitFromTheKeyboardWhereTheyRefuse) {
  start();
  ChildProcess rival = startRival({"--stubborn"});
  awaitLog("rival app running, auto quit false");
  awaitStatus(paused);
  waitFor("no ghost", [this] { return !scene_->ghost().onScreen(); });
  waitFor("the prompt", [this] { return titled("Nimbletype").has_value(); });
  // It came by itself: what is typed goes on into the text.
  expectThatTabArrives();
  const QPoint words = scene_->windows().placeOf(*titled("Nimbletype"))->center();
  scene_->user().movePointer(words.x(), words.y());
  scene_->user().click();
  // The one button is to quit and, once that was refused, to force it, and then closes the prompt.
  waitFor("the rival forced to quit", [&] {
    scene_->user().press(key::returnKey);
    rest(std::chrono::milliseconds(200));
    return !rival.isRunning();
  });
  EXPECT_EQ(rival.exitStatus(), std::nullopt);
  waitFor("the prompt closed", [&] {
    scene_->user().press(key::returnKey);
    rest(std::chrono::milliseconds(200));
    return !titled("Nimbletype");
  });
  FieldUser(*scene_).empty();
  document_.clear();
  typeUntilGhostIsBack();
}

}  // namespace
}  // namespace nimbletype
