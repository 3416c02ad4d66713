#include "platform/linux/pasteboard/x11_pasteboard.h"

#include <gtest/gtest.h>

#include <QCoreApplication>

#include "platform/qt/system/qt_main_loop.h"
#include "tests/platform/linux/pasteboard/clipboard_application.h"
#include "tests/platform/pasteboard/pasteboard_conformance.h"
#include "tools/stage/private_display.h"
#include "tools/stage/waiting.h"

namespace nimbletype {
namespace {

int noArguments = 0;

// One application copies, another one pastes.
struct X11PasteboardHarness : RealTime {
  using Formats = ClipboardApplication::Formats;
  Pasteboard& pasteboard() { return x11; }
  std::string textFormat() { return "text/plain"; }
  std::string passingMark() { return "x-kde-passwordManagerHint"; }
  void copy(const Formats& formats) { copying.copy(formats); }
  Formats paste() { return pasting.paste(); }
  void hang(bool hangs) { copying.hang(hangs); }

  QCoreApplication application{noArguments, nullptr};
  PrivateDisplay display;
  QtMainLoop loop;
  X11Pasteboard x11{loop, display.name()};
  ClipboardApplication copying{display.name()}, pasting{display.name()};
};

INSTANTIATE_TYPED_TEST_SUITE_P(X11, PasteboardConformance, X11PasteboardHarness);

TEST(X11Pasteboard, SavesWhatItHasRoomFor) {
  X11PasteboardHarness desk;
  desk.copy({{"text/plain", "text"}, {"application/x-huge", std::string(70'000'000, 'x')}});
  std::optional<SavedPasteboard> saved;
  const Task task = desk.x11.save([&](auto result) { saved = std::move(result); });
  waitFor("what is on the clipboard", [&] { return saved.has_value(); });
  EXPECT_EQ(saved->leftOut, 1u);
  EXPECT_TRUE(desk.x11.lend("lent"));
  desk.x11.restore(*saved);
  const auto found = desk.paste();
  EXPECT_EQ(found.at("text/plain"), "text");
  EXPECT_FALSE(found.contains("application/x-huge"));
}

// An application that pastes waits for us, and we may be waiting for that application's text at the time.
TEST(X11Pasteboard, ServesBesideABusyMainLoop) {
  X11PasteboardHarness desk;
  const std::string large(1'000'000, 'x');
  ASSERT_TRUE(desk.x11.lend(large));
  EXPECT_EQ(desk.pasting.pasteBesideABusyMainLoop().at("text/plain"), large);
  EXPECT_EQ(desk.x11.reading(), Pasteboard::Reading::done);
}

TEST(X11Pasteboard, HasNothingWithoutADisplay) {
  QCoreApplication application(noArguments, nullptr);
  QtMainLoop loop;
  X11Pasteboard nowhere(loop, ":4711");
  bool answered = false;
  const Task task = nowhere.save([&](const auto& saved) {
    answered = true;
    EXPECT_FALSE(saved);
  });
  waitFor("an answer", [&] { return answered; });
  EXPECT_FALSE(nowhere.lend("text"));
  EXPECT_FALSE(nowhere.isOurs());
}

}  // namespace
}  // namespace nimbletype
