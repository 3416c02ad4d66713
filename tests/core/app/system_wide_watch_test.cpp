#include "core/app/system_wide_watch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/scripted/keys/scripted_event_tap.h"
#include "platform/scripted/system/recording_system_log.h"
#include "platform/scripted/system/scripted_permission_source.h"
#include "platform/scripted/system/scripted_system_settings.h"
#include "platform/scripted/system/virtual_main_loop.h"

namespace nimbletype {
namespace {

using testing::ElementsAre;
using Line = RecordingSystemLog::Line;

struct SystemWideWatchTest : testing::Test {
  void trust(bool trusted) {
    desktop.trusted = trusted;
    desktop.tell();
  }
  VirtualMainLoop loop;
  RecordingSystemLog log;
  ScriptedPermissionSource desktop;
  ScriptedSystemSettings settings;
  ScriptedEventTap tap;
  Permissions permissions{desktop, settings, loop};
  KeyTap keys{tap, log};
  int begun = 0;
  SystemWideWatch watch{permissions, keys, loop, log, [this] { ++begun; }};
};

TEST_F(SystemWideWatchTest, RunsTheTapWhileItIsAllowed) {
  EXPECT_FALSE(watch.start());
  EXPECT_EQ(begun, 0);
  trust(true);
  EXPECT_TRUE(tap.isRunning());
  EXPECT_EQ(begun, 1);
  trust(false);
  EXPECT_FALSE(tap.isRunning());
  trust(true);
  EXPECT_TRUE(tap.isRunning());
  EXPECT_EQ(begun, 1);
  EXPECT_THAT(log.lines, ElementsAre(Line{"app", "system-wide start: tap running false"},
                                     Line{"app", "system-wide start: tap running true"},
                                     Line{"app", "system-wide start: tap running true"}));
}

TEST_F(SystemWideWatchTest, TriesAgainForATapThatIsRefusedOrTakenAway) {
  trust(true);
  tap.allowed = false;
  EXPECT_FALSE(watch.start());
  EXPECT_EQ(begun, 1) << "fields are read all the same";
  tap.allowed = true;
  loop.advance(SystemWideWatch::retryInterval);
  EXPECT_TRUE(tap.isRunning());
  tap.takeAway();
  EXPECT_FALSE(keys.isRunning());
  loop.advance(SystemWideWatch::retryInterval);
  EXPECT_TRUE(keys.isRunning());
  watch.stop();
  EXPECT_FALSE(tap.isRunning());
  trust(false);
  trust(true);
  loop.advance(SystemWideWatch::retryInterval);
  EXPECT_FALSE(tap.isRunning()) << "once the application quits it lets go for good";
}

}  // namespace
}  // namespace nimbletype
