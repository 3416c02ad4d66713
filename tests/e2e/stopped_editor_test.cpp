#include <gtest/gtest.h>

#include <csignal>

#include "tests/support/desktop_session.h"
#include "tools/nimbletype-demo/scene.h"

namespace nimbletype {
namespace {

using namespace std::chrono_literals;

// The user's editor hangs while it is read: only that editor suffers.
class StoppedEditor : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(DesktopSession::start());
    const auto programs = std::filesystem::read_symlink("/proc/self/exe").parent_path();
    scene_ = std::make_unique<Scene>(Scene::Cast{programs / "nimbletype", STARTER_MODEL, "mousepad", "", ""});
    scene_->startApplication();
  }

  // Asks for a suggestion, for which the field has to be read at once.
  void press(const KeyCombo& combo) { scene_->user().press(combo.keyCode, combo.modifiers); }

  std::unique_ptr<Scene> scene_;
};

TEST_F(StoppedEditor, LeavesTheNextFieldItsSuggestions) {
  scene_->typeUntilGhost([](const std::string&) {});
  ASSERT_EQ(kill(scene_->editor().processID(), SIGSTOP), 0);
  for (int i = 0; i < 5; ++i) press({key::space, {ModifierSet::control | ModifierSet::option}});
  scene_->typeSlowly("lost in a queue");

  const ScratchFolder folder;
  const DesktopWindows windows;
  {
    Editor next("featherpad", folder.path(), windows);
    const std::string typed = "Please let me know if you";
    scene_->typeSlowly(typed);
    waitFor("the keys in the next editor", [&] { return next.text() == typed; });
    waitFor("a ghost after that", [&] {
      scene_->trace().readOn();
      const auto& last = scene_->trace().lastSuggestion();
      return last && (last->before + last->text).starts_with(typed) && scene_->ghost().onScreen();
    });
    ASSERT_EQ(kill(scene_->editor().processID(), SIGCONT), 0);
  }
  waitFor("the first editor to have its field again", [&] { return scene_->editor().findField(); });
  scene_->typeKey('\n', 70ms);
  scene_->typeUntilGhost([](const std::string&) {});
}

}  // namespace
}  // namespace nimbletype
