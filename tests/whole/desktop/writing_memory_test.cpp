#include <gmock/gmock.h>

#include <csignal>
#include <cstdlib>
#include <fstream>
#include <iterator>

#include "tools/stage/desktop_session.h"
#include "tools/stage/scene/scene.h"
#include "tools/stage/scene/scripted_model.h"

namespace nimbletype {
namespace {

using testing::HasSubstr;
using testing::Not;
namespace fs = std::filesystem;

constexpr std::uint16_t letterA = 0;

// The real application, editor and keyring; only the model says what it is told to.
class WritingMemoryOnTheDesktop : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(DesktopSession::start());
    unsetenv("GNOME_KEYRING_CONTROL");
    keyring_ = std::make_unique<DesktopProgram>(std::vector<std::string>{
        "bash", "-c",
        "exec gnome-keyring-daemon --foreground --unlock --components=secrets < <(printf password)"});
    ASSERT_EQ(std::system("gdbus wait --session --timeout 20 org.freedesktop.secrets"), 0);
    const auto programs = fs::read_symlink("/proc/self/exe").parent_path();
    scene_ = std::make_unique<Scene>(Scene::Cast{programs / "nimbletype", "", "mousepad"});
    scene_->setSettings('{' + model_.settings() + R"(,"memoryEnabled":true,"suggestFixes":false})");
    scene_->startApplication();
  }

  void write(const std::string& text) {
    scene_->typeSlowly(text);
    awaitDocument(text);
  }
  void awaitDocument(const std::string& text) {
    waitFor("the document to hold \"" + text + "\"", [&] { return scene_->editor().text() == text; });
  }
  // In the good order in which a session ends.
  void quit() {
    scene_->application().signal(SIGTERM);
    waitFor("the application to end", [this] { return !scene_->application().isRunning(); });
  }
  void emptyDocument() {
    scene_->user().press(letterA, {ModifierSet::control});
    scene_->user().press(key::deleteBack);
    awaitDocument("");
  }
  std::string sealedFile() const {
    std::ifstream file(path(), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  fs::path path() const { return scene_->dataFolder() / "memory.sealed"; }

  std::unique_ptr<DesktopProgram> keyring_;
  ScriptedModel model_;
  std::unique_ptr<Scene> scene_;
};

TEST_F(WritingMemoryOnTheDesktop, APassageComesBackAfterARestart) {
  model_.willSay("ing before breakfast.");
  write("The gardener waters all of the tulips every morn");
  waitFor("the ghost", [this] { return scene_->offered() == "ing before breakfast."; });
  scene_->user().press(key::aboveTab);
  const std::string passage = "The gardener waters all of the tulips every morning before breakfast.";
  awaitDocument(passage);
  quit();

  const std::string file = sealedFile();
  EXPECT_GT(file.size(), passage.size());
  for (const char* word : {"gardener", "tulips", "breakfast", "appKey", "mousepad"})
    EXPECT_THAT(file, Not(HasSubstr(word)));
  EXPECT_EQ(fs::status(path()).permissions(), fs::perms::owner_read | fs::perms::owner_write);

  emptyDocument();
  scene_->startApplication();
  EXPECT_THAT(scene_->applicationLog(), Not(HasSubstr("gardener")));
  write("Who is going to look after your tuli");
  waitFor("a prompt with the passage and the new text", [this] {
    return model_.wasTold(
        "[Writer's phrasing] The gardener waters all of the tulips every morning before breakfast.");
  });
  EXPECT_FALSE(fs::exists(path().string() + ".unreadable"));
}

}  // namespace
}  // namespace nimbletype
