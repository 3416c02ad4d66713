#include <gtest/gtest.h>

#include <csignal>
#include <fstream>
#include <nlohmann/json.hpp>

#include "core/completion/suggestion.h"
#include "tests/support/desktop_session.h"
#include "text/text.h"
#include "tools/nimbletype-demo/scene.h"

namespace nimbletype {
namespace {

// What becomes of the user's keys when the application dies or hangs while a ghost is on screen.
class StoppedApplication : public testing::Test {
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
    awaitDocument("the keys pressed");
  }

  void awaitDocument(const std::string& what) {
    waitFor(what + " in the document, which is to be \"" + document_ + "\"",
            [this] { return scene_->editor().text() == document_; });
  }

  std::unique_ptr<Scene> scene_;
  std::string document_;
};

TEST_F(StoppedApplication, KeysArriveOnceItIsKilled) {
  scene_->application().signal(SIGKILL);
  waitFor("the application to be gone", [this] { return !scene_->application().isRunning(); });
  expectThatKeysArrive();
}

TEST_F(StoppedApplication, LosesNoFiguresWhenTheSessionEnds) {
  const std::string word(nextChunk(scene_->offered().value_or(""), true, true));
  scene_->user().press(key::tab);
  document_ += word;
  awaitDocument("the word taken");
  scene_->application().signal(SIGTERM);
  waitFor("the application to end", [this] { return !scene_->application().isRunning(); });
  std::ifstream file(scene_->dataFolder() / "stats.json");
  const auto statistics = nlohmann::json::parse(file);
  ASSERT_EQ(statistics.at("days").size(), 1U);
  EXPECT_EQ(statistics.at("days").front().at("accepts"), 1);
  EXPECT_EQ(statistics.at("days").front().at("characters"), text::characterCount(word));
}

TEST_F(StoppedApplication, KeysArriveWhileItHangsAndItWorksAgainAfterwards) {
  scene_->application().signal(SIGSTOP);
  expectThatKeysArrive();

  scene_->application().signal(SIGCONT);
  scene_->typeKey('\n', std::chrono::milliseconds(70));
  document_ += '\n' + scene_->typeUntilGhost([](const std::string&) {});
  const auto rest = scene_->offered();
  ASSERT_TRUE(rest);
  scene_->user().press(key::tab);
  document_ += nextChunk(*rest, true, true);
  awaitDocument("the word taken");
}

}  // namespace
}  // namespace nimbletype
