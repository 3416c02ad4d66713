#include <gtest/gtest.h>

#include "tools/stage/desktop_session.h"
#include "tools/stage/scene/scene.h"

namespace nimbletype {
namespace {

// Emoji named and drawn as users of real editors do it. Any model would do; none of its words is taken.
class EmojiInEditor : public testing::TestWithParam<const char*> {
 protected:
  void SetUp() override { ASSERT_TRUE(DesktopSession::start()); }

  void awaitText(const std::string& wanted) {
    try {
      waitFor("the text \"" + wanted + "\"", [&] { return scene_->editor().text() == wanted; });
    } catch (const GaveUp&) {
      FAIL() << "instead of \"" << wanted << "\" there is \"" << scene_->editor().text() << '"';
    }
  }

  // Tab belongs to the application unless something is offered.
  void typeAndTake(const std::string& typed, std::uint16_t keyCode) {
    scene_->typeSlowly(typed);
    waitFor("an offer after \"" + typed + "\"", [&] {
      scene_->trace().readOn();
      return scene_->ghost().onScreen() && scene_->trace().lastStatus() == "Showing a suggestion";
    });
    scene_->user().press(keyCode);
  }

  std::unique_ptr<Scene> scene_;
};

TEST_P(EmojiInEditor, TakesThePlaceOfWhatWasTyped) {
  const auto programs = std::filesystem::read_symlink("/proc/self/exe").parent_path();
  scene_ = std::make_unique<Scene>(
      Scene::Cast{programs / "nimbletype", STARTER_MODEL, GetParam(), "", "", R"({"onDemandOnly":true})"});
  scene_->startApplication();
  typeAndTake("Off we go :rocke", key::tab);
  awaitText("Off we go 🚀");
  std::this_thread::sleep_for(std::chrono::milliseconds(500));  // what follows at once counts as our own
  typeAndTake(" :)", key::tab);
  awaitText("Off we go 🚀 🙂");
  std::this_thread::sleep_for(std::chrono::milliseconds(500));
  typeAndTake(" :tad", key::returnKey);
  awaitText("Off we go 🚀 🙂 🎉");
}

INSTANTIATE_TEST_SUITE_P(Editors, EmojiInEditor, testing::Values("mousepad", "featherpad"));

}  // namespace
}  // namespace nimbletype
