#include <gmock/gmock.h>

#include <csignal>
#include <cstdlib>
#include <fstream>
#include <iterator>

#include "tests/whole/desktop/field_user.h"
#include "tools/stage/desktop_session.h"

namespace nimbletype {
namespace {

using testing::HasSubstr;
using testing::Not;
namespace fs = std::filesystem;

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
    FieldUser(*scene_).awaitText(text);
  }
  // In the good order in which a session ends.
  void quit() {
    scene_->application().signal(SIGTERM);
    waitFor("the application to end", [this] { return !scene_->application().isRunning(); });
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
  FieldUser(*scene_).awaitText(passage);
  quit();

  std::ifstream stream(path(), std::ios::binary);
  const std::string file{std::istreambuf_iterator<char>(stream), {}};
  EXPECT_GT(file.size(), passage.size());
  for (const char* word : {"gardener", "tulips", "breakfast", "appKey", "mousepad"})
    EXPECT_THAT(file, Not(HasSubstr(word)));
  EXPECT_EQ(fs::status(path()).permissions(), fs::perms::owner_read | fs::perms::owner_write);

  FieldUser(*scene_).empty();
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
