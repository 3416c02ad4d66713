#include <gtest/gtest.h>

#include <csignal>
#include <fstream>
#include <nlohmann/json.hpp>

#include "core/completion/showing/suggestion.h"
#include "tests/whole/desktop/field_user.h"
#include "text/text.h"
#include "tools/stage/desktop_session.h"

namespace nimbletype {
namespace {

// What becomes of the user's keys and suggestions when the application, or the editor, dies or hangs while a
// ghost is on screen.
class StoppedProcess : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(DesktopSession::start());
    const auto programs = std::filesystem::read_symlink("/proc/self/exe").parent_path();
    scene_ = std::make_unique<Scene>(Scene::Cast{programs / "nimbletype", STARTER_MODEL, "mousepad", "", ""});
    scene_->startApplication();
    document_ = scene_->typeUntilGhost([](const std::string&) {});
  }

  // The keys that a ghost would take among them.
  void expectThatKeysArrive() {
    scene_->user().press(key::tab);
    scene_->typeSlowly("ab");
    scene_->user().press(key::aboveTab);
    scene_->user().press(key::tab);
    scene_->typeSlowly("c");
    document_ += "\tab`\tc";
    awaitDocument();
  }

  void awaitDocument() { FieldUser(*scene_).awaitText(document_); }

  std::unique_ptr<Scene> scene_;
  std::string document_;
};

TEST_F(StoppedProcess, KeysArriveOnceItIsKilled) {
  scene_->application().signal(SIGKILL);
  waitFor("the application to be gone", [this] { return !scene_->application().isRunning(); });
  expectThatKeysArrive();
}

TEST_F(StoppedProcess, LosesNoFiguresWhenTheSessionEnds) {
  const std::string word(nextChunk(scene_->offered().value_or(""), true, true));
  scene_->user().press(key::tab);
  document_ += word;
  awaitDocument();
  scene_->application().signal(SIGTERM);
  waitFor("the application to end", [this] { return !scene_->application().isRunning(); });
  std::ifstream file(scene_->dataFolder() / "stats.json");
  const auto statistics = nlohmann::json::parse(file);
  ASSERT_EQ(statistics.at("days").size(), 1U);
  EXPECT_EQ(statistics.at("days").front().at("accepts"), 1);
  EXPECT_EQ(statistics.at("days").front().at("characters"), text::characterCount(word));
}

TEST_F(StoppedProcess, KeysArriveWhileItHangsAndItWorksAgainAfterwards) {
  scene_->application().signal(SIGSTOP);
  expectThatKeysArrive();

  scene_->application().signal(SIGCONT);
  scene_->typeKey('\n', std::chrono::milliseconds(70));
  document_ += '\n' + scene_->typeUntilGhost([](const std::string&) {});
  const auto rest = scene_->offered();
  ASSERT_TRUE(rest);
  scene_->user().press(key::tab);
  document_ += nextChunk(*rest, true, true);
  awaitDocument();
}

// Whose window was the last, so that no other comes to the front.
TEST_F(StoppedProcess, AnEditorTakesItsGhostWithIt) {
  // A suggestion that is still growing would notice by itself.
  rest(std::chrono::seconds(1));
  ASSERT_TRUE(scene_->ghost().onScreen());
  ASSERT_EQ(kill(scene_->editor().processID(), SIGKILL), 0);
  waitFor("no ghost", [this] { return !scene_->ghost().onScreen(); });
}

// Only that editor suffers.
TEST_F(StoppedProcess, AnEditorLeavesTheNextFieldItsSuggestions) {
  ASSERT_EQ(kill(scene_->editor().processID(), SIGSTOP), 0);
  // Each asks for a suggestion, for which the field has to be read at once.
  for (int i = 0; i < 5; ++i) scene_->user().press(key::space, {ModifierSet::control | ModifierSet::option});
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
  scene_->typeKey('\n', std::chrono::milliseconds(70));
  scene_->typeUntilGhost([](const std::string&) {});
}

}  // namespace
}  // namespace nimbletype
