#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "menubar/menu_bar_hiders.h"
#include "menubar/rival_watcher.h"
#include "platform/scripted/desktop/recording_status_bar.h"
#include "platform/scripted/desktop/scripted_running_apps.h"
#include "platform/scripted/desktop/scripted_screens.h"
#include "platform/scripted/system/virtual_main_loop.h"

namespace nimbletype {
namespace {

using testing::ElementsAre;
using Quit = RunningApps::Quit;

TEST(RivalApps, AreKnownByPrefixOrByWholeName) {
  const RivalApps rivals("com.moravelle.nimbletype");
  struct Case {
    const char *identifier, *name;
    bool isRival;
  };
  for (const Case& c : std::to_array<Case>({{"app.cotypist.Cotypist", "Anything", true},
                                            {"app.cotypist", "Anything", false},
                                            {"org.example.tabs", "Tab-Tab-Tab", true},
                                            {"org.example.tabs", "TabTab", false},
                                            {"org.example.tabs", "TabTabTabs", false},
                                            {"", "INLINE.AI", true},
                                            {"", "Nimbletype", false},
                                            {"", "", false},
                                            {"com.moravelle.nimbletype", "Tab Type", false}}))
    EXPECT_EQ(rivals.isRival(c.identifier, c.name), c.isRival) << c.identifier << " " << c.name;
}

struct RivalWatcherTest : testing::Test {
  void launch(std::int64_t process, const std::string& name) {
    apps.launch({.processID = process, .bundleID = "org.example." + name, .appName = name});
  }
  ScriptedRunningApps apps;
  VirtualMainLoop loop;
  RivalWatcher watcher{apps, loop, RivalApps("nimbletype")};
  int appeared = 0;
};

TEST_F(RivalWatcherTest, TellsOfEachRivalOnce) {
  launch(1, "Mail");
  launch(2, "Tab Type");
  watcher.start([this] { ++appeared; });
  EXPECT_EQ(appeared, 1);
  EXPECT_EQ(watcher.pausedBy().get(), "Tab Type");
  launch(3, "Notes");
  EXPECT_EQ(appeared, 1);
  launch(4, "TabTabTab");
  EXPECT_EQ(appeared, 2);
  apps.end(2);
  EXPECT_EQ(watcher.pausedBy().get(), "TabTabTab");
  apps.launch({.processID = 5, .bundleID = "", .appName = "Typeseer", .isOurs = true});
  EXPECT_EQ(watcher.running().get().size(), 1u);
  apps.end(4);
  EXPECT_EQ(watcher.pausedBy().get(), "");
  EXPECT_EQ(appeared, 2);
}

TEST_F(RivalWatcherTest, AsksThenTellsOfTheRefusalThenForces) {
  apps.stubborn = {2};
  launch(1, "Tab Type");
  launch(2, "Friendware");
  launch(3, "Mail");
  watcher.start({});
  watcher.quitRivals(false);
  EXPECT_EQ(watcher.quitState().get(), QuitState::quitting);
  EXPECT_THAT(apps.asked, ElementsAre(std::pair(1, Quit::polite), std::pair(2, Quit::polite)));
  loop.advance(RivalWatcher::patience);
  EXPECT_EQ(watcher.quitState().get(), QuitState::refused);
  watcher.quitRivals(true);
  EXPECT_EQ(watcher.quitState().get(), QuitState::idle) << "it is gone already";
  EXPECT_EQ(apps.asked.back(), std::pair(std::int64_t{2}, Quit::forced));
  EXPECT_EQ(watcher.pausedBy().get(), "");
  loop.advance(RivalWatcher::patience);
  EXPECT_EQ(watcher.quitState().get(), QuitState::idle);
}

TEST_F(RivalWatcherTest, AsksALaterOneBeforeItForces) {
  apps.stubborn = {1};
  launch(1, "Tab Type");
  watcher.start({});
  watcher.quitRivals(false);
  loop.advance(RivalWatcher::patience);
  launch(2, "Friendware");
  EXPECT_EQ(watcher.quitState().get(), QuitState::idle);
  watcher.quitRivals(false);
  loop.advance(RivalWatcher::patience);
  EXPECT_EQ(watcher.quitState().get(), QuitState::refused);
  EXPECT_EQ(apps.asked.back(), std::pair(std::int64_t{2}, Quit::polite));
}

TEST(MenuBarHiders, KnowAHiddenIconAndWhoHidesIt) {
  ScriptedRunningApps apps;
  RecordingStatusBar bar;
  ScriptedScreens screens;
  const MenuBarHiders hiders(apps, bar, screens);
  apps.launch({.processID = 1, .bundleID = "com.jordanbaird.Ice", .appName = "Ice"});
  apps.launch({.processID = 2, .bundleID = "com.jordanbaird.Iceberg", .appName = "Iceberg"});
  ASSERT_EQ(hiders.runningHiders().size(), 1u);
  EXPECT_FALSE(hiders.isStatusIconVisible()) << "before there is an item";
  bar.show({"pencil.and.scribble", "", ""});
  const BottomLeftRect screen = screens.all().front().frame;
  const auto visibleAt = [&](std::optional<BottomLeftRect> frame) {
    bar.host = {true, frame};
    return hiders.isStatusIconVisible();
  };
  EXPECT_TRUE(visibleAt(BottomLeftRect{screen.right() - 30, screen.top() - 24, 24, 24}));
  EXPECT_TRUE(visibleAt(std::nullopt)) << "where the desktop keeps places to itself";
  EXPECT_FALSE(visibleAt(BottomLeftRect{screen.right() - 30, screen.top() - 24, 0, 24}));
  EXPECT_FALSE(visibleAt(BottomLeftRect{screen.right() - 10, screen.top() - 24, 24, 24}));
}

}  // namespace
}  // namespace nimbletype
