#include "tests/whole/desktop/tray_life/application_user.h"

namespace nimbletype {
namespace {

class TrayItem : public ApplicationOnTheDesktop {
 protected:
  void SetUp() override {
    ApplicationOnTheDesktop::SetUp();
    startTray();
    start();
  }
  void startTray() { tray_ = std::make_unique<DesktopProgram>(std::vector<std::string>{"tint2"}); }

  // A small window within the tray's.
  Window item() const {
    return find(scene_->application(), [this](xcb_window_t window) {
      const auto place = scene_->windows().placeOf(window), frame = scene_->windows().frameOf(window);
      return place && frame && place->width() < 64 && frame->width() > place->width();
    });
  }
  void clickItem() {
    const QPoint middle = scene_->windows().placeOf(*item())->center();
    scene_->user().movePointer(middle.x(), middle.y());
    scene_->user().click();
  }
  Window panel() const {
    return find(scene_->application(), [this](xcb_window_t window) {
      const auto place = scene_->windows().placeOf(window);
      return scene_->windows().isUnmanaged(window) && place && place->width() > 200 &&
             scene_->windows().titleOf(window) == "Nimbletype";
    });
  }
  void openPanel() {
    waitFor("the item", [this] { return item().has_value(); });
    rest(std::chrono::milliseconds(500));  // two clicks in a row are a double one
    clickItem();
    waitFor("the panel", [this] { return panel().has_value(); });
  }
  void awaitNoPanel() {
    waitFor("the panel closed", [this] { return !panel(); });
  }
  void chooseFirst() {
    openPanel();
    scene_->user().press(key::downArrow);
    scene_->user().press(key::returnKey);
    awaitNoPanel();
  }

  std::unique_ptr<DesktopProgram> tray_;
};

TEST_F(TrayItem, OpensAPanelThatEscapeCloses) {
  openPanel();
  const QRect place = scene_->windows().placeOf(*panel()).value_or(QRect());
  EXPECT_TRUE(scene_->windows().wholeScreen().contains(place));
  scene_->user().press(key::escape);
  awaitNoPanel();
  expectThatTabArrives();
}

TEST_F(TrayItem, PausesAndResumesTheApplicationWrittenIn) {
  chooseFirst();
  awaitStatus("Paused in Mousepad");
  waitFor("no ghost", [this] { return !scene_->ghost().onScreen(); });
  expectThatTabArrives();
  chooseFirst();
  typeUntilGhostIsBack();
}

TEST_F(TrayItem, ComesBackWithItsTray) {
  waitFor("the item", [this] { return item().has_value(); });
  kill(tray_->processID(), SIGKILL);
  waitFor("no item", [this] { return !item(); });
  startTray();
  waitFor("the item in the next tray", [this] { return item().has_value(); });
  typeUntilGhostIsBack();
  EXPECT_EQ(end(scene_->application()), 0);
  expectThatTabArrives();
}

}  // namespace
}  // namespace nimbletype
