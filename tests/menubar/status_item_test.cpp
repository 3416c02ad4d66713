#include <gtest/gtest.h>

#include "core/app/launch_at_login.h"
#include "core/app/menu_model.h"
#include "menubar/hidden_icon_check.h"
#include "menubar/status_item_controller.h"
#include "platform/scripted/desktop/recording_status_bar.h"
#include "platform/scripted/desktop/scripted_running_apps.h"
#include "platform/scripted/desktop/scripted_screens.h"
#include "platform/scripted/storage/memory_defaults_store.h"
#include "platform/scripted/storage/memory_file_store.h"
#include "platform/scripted/system/recording_system_log.h"
#include "platform/scripted/system/scripted_login_item.h"
#include "platform/scripted/system/virtual_main_loop.h"

namespace nimbletype {
namespace {

using namespace std::chrono_literals;

class RecordingPanel : public MenuPanel {
 public:
  void open(const MenuContent& content, const std::optional<BottomLeftRect>&) override { shown = content; }
  void update(const MenuContent& content) override { shown = content; }
  void close() override { shown.reset(); }
  bool isOpen() const override { return shown.has_value(); }
  void onChosen(std::function<void(MenuAction)> chosen) override { choose = std::move(chosen); }
  void onDismissed(std::function<void()> dismissed) override { dismissed_ = std::move(dismissed); }
  void dismiss() {
    close();
    dismissed_();
  }
  std::optional<MenuContent> shown;
  std::function<void(MenuAction)> choose;

 private:
  std::function<void()> dismissed_;
};

struct StatusItemTest : testing::Test {
  std::string symbol() {
    loop.advance(Milliseconds{0});
    return bar.icon ? bar.icon->symbol : "(none)";
  }
  MenuState state() {
    MenuState now{.wordsToday = 3};
    tellPauses(now, rules, front);
    return now;
  }
  VirtualMainLoop loop;
  RecordingSystemLog log;
  MemoryDefaultsStore defaults;
  MemoryFileStore rulesFile;
  Preferences prefs{defaults};
  AppRules rules{prefs, rulesFile, loop, log};
  std::optional<RunningApp> front = RunningApp{.processID = 1, .bundleID = "org.mail", .appName = "Mail"};
  RecordingStatusBar bar;
  RecordingPanel panel;
  std::vector<MenuAction> done;
  StatusItemController item{{bar, panel, loop, prefs},
                            {[this] { return state(); }, [this](MenuAction a) { done.push_back(a); }, {}}};
  Task following = rules.observe([this] { item.refreshItem(); });
};

TEST_F(StatusItemTest, FollowsAPauseToItsEnd) {
  item.installItem();
  EXPECT_EQ(symbol(), "pencil.and.scribble");
  rules.pauseEverywhere(1h);
  EXPECT_EQ(symbol(), "pause.circle.fill");
  EXPECT_EQ(state().pausedUntil, loop.wallNow() + 1h);
  loop.advance(1h);
  EXPECT_EQ(symbol(), "pencil.and.scribble");
  rules.pauseEverywhere();
  EXPECT_TRUE(state().isPausedEverywhere && !state().pausedUntil);
  rules.resumeEverywhere();
  rules.togglePause("app:org.mail", "Mail");
  rules.togglePause("app:org.notes", "Notes");
  EXPECT_EQ(symbol(), "pause.circle.fill");
  loop.advance(15min);
  EXPECT_EQ(symbol(), "pencil.and.scribble");
  front->bundleID = "com.apple.Terminal";
  EXPECT_TRUE(state().isFrontAppOff);
  prefs.showMenuBarIcon.set(false);
  item.installItem();
  EXPECT_EQ(symbol(), "(none)");
}

TEST_F(StatusItemTest, OpensAndClosesTheMenuByTheSameClick) {
  item.installItem();
  bar.click();
  EXPECT_TRUE(panel.isOpen() && bar.highlighted);
  bar.click();
  EXPECT_FALSE(panel.isOpen() || bar.highlighted);
  bar.click();
  panel.dismiss();  // the press of the next click did that
  EXPECT_FALSE(bar.highlighted);
  bar.click();
  EXPECT_FALSE(panel.isOpen());
  loop.advance(1s);
  bar.click();
  EXPECT_TRUE(panel.isOpen());
}

TEST_F(StatusItemTest, KeepsTheMenuOpenForRowsThatChangeIt) {
  item.installItem();
  bar.click();
  const auto rows = panel.shown->groups[2].size();
  panel.choose(MenuAction::unfoldChoices);
  EXPECT_EQ(panel.shown->groups[2].size(), rows + 4);
  panel.choose(MenuAction::toggleCount);
  EXPECT_TRUE(panel.isOpen());
  panel.choose(MenuAction::pauseFor1Hour);
  EXPECT_FALSE(panel.isOpen());
  EXPECT_EQ(done, (std::vector{MenuAction::toggleCount, MenuAction::pauseFor1Hour}));
  bar.click();
  EXPECT_EQ(panel.shown->groups[2].size(), rows) << "folded again";
}

TEST_F(StatusItemTest, RemindsOfAHiddenIconWhereThatIsWanted) {
  ScriptedRunningApps apps;
  ScriptedScreens screens;
  const MenuBarHiders hiders(apps, bar, screens);
  int prompts = 0;
  HiddenIconCheck check(hiders, prefs, loop, [&](bool isHidden) { prompts += isHidden ? 1 : -1; });
  const auto promptsAfterInstall = [&] {
    prompts = 0;
    item.installItem();
    check.installed();
    loop.advance(HiddenIconCheck::settling);
    return prompts;
  };
  EXPECT_EQ(promptsAfterInstall(), 0);
  bar.host = {};
  EXPECT_EQ(promptsAfterInstall(), 1);
  check.placeChanged();
  EXPECT_EQ(prompts, 1);
  bar.host = {true, std::nullopt};  // a tray that came late
  check.placeChanged();
  EXPECT_EQ(prompts, 0);
  bar.host = {};
  prefs.remindHiddenIcon.set(false);
  EXPECT_EQ(promptsAfterInstall(), 0);
  prefs.remindHiddenIcon.set(true);
  prefs.showMenuBarIcon.set(false);
  EXPECT_EQ(promptsAfterInstall(), 0);
}

TEST(LaunchAtLogin, LogsAFailureAndKeepsTheDesktopsWord) {
  ScriptedLoginItem desktop;
  RecordingSystemLog log;
  LaunchAtLogin login(desktop, log);
  login.set(true);
  desktop.refusal = "no such service";
  login.set(false);
  EXPECT_TRUE(login.isOn());
  ASSERT_EQ(log.lines.size(), 1u);
  EXPECT_EQ(log.lines[0].message, "Nimbletype: launch at login change failed: no such service");
}

}  // namespace
}  // namespace nimbletype
