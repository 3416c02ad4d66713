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
  const auto lend = [&](const std::string& text) {
    const auto before = clipboard.state().changeCount;
    ASSERT_TRUE(other.lend(text));
    waitFor("word of the copy", [&] { return clipboard.state().changeCount != before; });
    std::optional<std::string> found;
    const Task reading =
        clipboard.read([&](std::optional<std::string> read) { found = read.value_or("nothing"); });
    waitFor("the text", [&] { return found.has_value(); });
    EXPECT_EQ(found, text);
  };
  lend("copied text");
  EXPECT_TRUE(clipboard.state().isConcealed);
  EXPECT_FALSE(clipboard.state().isTransient);
  isOurs = true;
  EXPECT_TRUE(clipboard.state().isTransient);
  lend("naïve 😀");
}

}  // namespace
}  // namespace nimbletype
