#include "platform/linux/pasteboard/x11_clipboard_text.h"

#include <gtest/gtest.h>

#include <QCoreApplication>

#include "platform/linux/pasteboard/x11_pasteboard.h"
#include "platform/qt/system/qt_main_loop.h"
#include "tests/platform/linux/accessibility/editor_world.h"

namespace nimbletype {
namespace {

// Another owner of the clipboard plays the application that is copied from: what it lends is marked as a
// password would be.
TEST(X11ClipboardText, TellsOfEachCopyAndItsMarks) {
  ASSERT_TRUE(DesktopSession::start());
  int argumentCount = 0;
  QCoreApplication application(argumentCount, nullptr);
  QtMainLoop loop;
  bool isOurs = false;
  X11ClipboardText clipboard([&] { return isOurs; });
  X11Pasteboard other(loop);
  const auto before = clipboard.state();
  ASSERT_TRUE(other.lend("copied text"));
  waitUntil("word of the copy", [&] { return clipboard.state().changeCount != before.changeCount; });
  EXPECT_TRUE(clipboard.state().isConcealed);
  EXPECT_FALSE(clipboard.state().isTransient);
  isOurs = true;
  EXPECT_TRUE(clipboard.state().isTransient);

  std::optional<std::string> text;
  Task reading = clipboard.read([&](std::optional<std::string> found) { text = found.value_or("nothing"); });
  waitUntil("the text", [&] { return text.has_value(); });
  EXPECT_EQ(text, "copied text");

  const auto then = clipboard.state().changeCount;
  ASSERT_TRUE(other.lend("naïve 😀"));
  waitUntil("word of the second copy", [&] { return clipboard.state().changeCount != then; });
  text.reset();
  reading = clipboard.read([&](std::optional<std::string> found) { text = found.value_or("nothing"); });
  waitUntil("the second text", [&] { return text.has_value(); });
  EXPECT_EQ(text, "naïve 😀");
}

}  // namespace
}  // namespace nimbletype
