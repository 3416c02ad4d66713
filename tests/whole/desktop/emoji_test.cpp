#include <gtest/gtest.h>

#include "tests/whole/desktop/field_user.h"
#include "tools/stage/desktop_session.h"

namespace nimbletype {
namespace {

// Emoji named and drawn as users of real editors do it. Any model would do; none of its words is taken.
class EmojiInEditor : public testing::TestWithParam<const char*> {
 protected:
  void SetUp() override { ASSERT_TRUE(DesktopSession::start()); }

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
  FieldUser(*scene_).awaitText("Off we go 🚀");
  std::this_thread::sleep_for(std::chrono::milliseconds(500));  // what follows at once counts as our own
  typeAndTake(" :)", key::tab);
  FieldUser(*scene_).awaitText("Off we go 🚀 🙂");
  std::this_thread::sleep_for(std::chrono::milliseconds(500));
  typeAndTake(" :tad", key::returnKey);
  FieldUser(*scene_).awaitText("Off we go 🚀 🙂 🎉");
}

INSTANTIATE_TEST_SUITE_P(Editors, EmojiInEditor, testing::Values("mousepad", "featherpad"));

}  // namespace
}  // namespace nimbletype
