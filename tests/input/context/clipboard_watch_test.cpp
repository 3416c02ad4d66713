#include "input/context/clipboard_watch.h"

#include <gtest/gtest.h>

#include "platform/scripted/pasteboard/scripted_clipboard_text.h"
#include "platform/scripted/system/virtual_main_loop.h"

namespace nimbletype {
namespace {

class ClipboardWatchTest : public ::testing::Test {
 protected:
  ClipboardWatchTest() {
    clipboard_.copy("copied long ago");
    watch_.setOn(true);
  }
  void wait(int ms) { loop_.advance(Milliseconds(ms)); }

  VirtualMainLoop loop_;
  ScriptedClipboardText clipboard_{loop_};
  bool mayRead_ = true;
  ClipboardWatch watch_{clipboard_, loop_, [this] { return mayRead_; }};
};

TEST_F(ClipboardWatchTest, KeepsACopyForTenMinutes) {
  wait(5000);
  EXPECT_EQ(watch_.text(), "");  // of unknown age
  EXPECT_EQ(clipboard_.timesRead, 0);
  clipboard_.copy("the address");
  wait(1001);
  EXPECT_EQ(watch_.text(), "the address");
  wait(9 * 60 * 1000);
  EXPECT_EQ(watch_.text(), "the address");
  wait(60 * 1000);
  EXPECT_EQ(watch_.text(), "");
  EXPECT_EQ(clipboard_.timesRead, 1);
}

TEST_F(ClipboardWatchTest, NeverReadsWhatIsMarked) {
  clipboard_.copy("the address");
  wait(1001);
  clipboard_.copy("hunter2", true);
  wait(1001);
  EXPECT_EQ(watch_.text(), "");
  clipboard_.copy("pasted by us", false, true);
  wait(1001);
  EXPECT_EQ(watch_.text(), "");
  EXPECT_EQ(clipboard_.timesRead, 1);
}

TEST_F(ClipboardWatchTest, NeverReadsWhatAPasswordManagerMayHaveCopied) {
  mayRead_ = false;
  watch_.frontmostChanged();
  wait(300);
  clipboard_.copy("hunter2");
  mayRead_ = true;  // the user is back in the browser before the next look
  watch_.frontmostChanged();
  wait(5000);
  EXPECT_EQ(clipboard_.timesRead, 0);
  clipboard_.copy("a harmless copy");
  wait(1001);
  EXPECT_EQ(watch_.text(), "a harmless copy");
}

TEST_F(ClipboardWatchTest, AsksForNothingWhileOff) {
  clipboard_.copy("the address");
  wait(1001);
  watch_.setOn(false);
  EXPECT_EQ(watch_.text(), "");
  EXPECT_TRUE(loop_.isIdle());
  watch_.setOn(true);
  wait(5000);
  EXPECT_EQ(watch_.text(), "");
  EXPECT_EQ(clipboard_.timesRead, 1);
}

}  // namespace
}  // namespace nimbletype
