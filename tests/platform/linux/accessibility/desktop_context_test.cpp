#include <gmock/gmock.h>

#include <QCoreApplication>

#include "input/context/context_collector.h"
#include "platform/linux/desktop/tesseract_lines.h"
#include "platform/linux/desktop/tesseract_screen_reader.h"
#include "platform/linux/desktop/x11_workspace.h"
#include "platform/linux/system/linux_background_work.h"
#include "platform/qt/system/qt_main_loop.h"
#include "platform/scripted/desktop/scripted_screen_reader.h"
#include "platform/scripted/desktop/scripted_screens.h"
#include "platform/scripted/keys/scripted_secure_input.h"
#include "platform/scripted/storage/memory_defaults_store.h"
#include "tests/platform/linux/accessibility/editor_world.h"

namespace nimbletype {
namespace {

using ::testing::HasSubstr;

const std::string notes = "The train leaves at nine.\nSeats are booked for everybody.\n";

struct DesktopContext : testing::Test {
  std::unique_ptr<OpenEditor> open(const std::string& program, const std::string& content) {
    auto editor = std::make_unique<OpenEditor>(program, content);
    if (!workspace) workspace = std::make_unique<X11Workspace>();
    waitFor(program + " in front", [&] {
      const auto app = workspace->frontmost();
      return app && app->processID == editor->processID();
    });
    return editor;
  }

  int noArguments = 0;
  QCoreApplication application{noArguments, nullptr};
  QtMainLoop loop;
  std::unique_ptr<X11Workspace> workspace;
};

// From one real window to another, as a user goes.
TEST_F(DesktopContext, KeepsTheTextOfAWindowThatWasLookedAt) {
  const auto editor = open("featherpad", notes);
  AtspiAccessibility ax;
  ScriptedScreens screens;
  ScriptedSecureInput secureInput;
  ScriptedScreenReader picture(loop);
  MemoryDefaultsStore store;
  Preferences prefs(store);
  ContextCollector collector({loop, ax, *workspace, screens, secureInput, picture, nullptr}, prefs, {},
                             [](const RunningApp&) { return true; });
  const auto recent = [&] {
    collector.focusMoved();
    rest(Milliseconds(300));
    return collector.gather({}).recentText;
  };
  // The first window is read while it is in front, whenever its application is ready.
  recent();
  recent();
  const auto second = open("mousepad", "Dear Anna");
  waitFor("the text of the first window", [&] { return !recent().empty(); });
  EXPECT_THAT(recent(), HasSubstr("The train leaves at nine.\nSeats are booked for everybody."));
}

TEST_F(DesktopContext, ReadsAPictureOfAWindow) {
  LinuxBackgroundWork work(loop);
  if (!TesseractScreenReader(work).isPermitted()) GTEST_SKIP() << "tesseract is not installed";
  const auto editor = open("mousepad", notes);
  TesseractScreenReader reader(work);
  std::string seen;
  Task reading;
  bool isReading = false;
  // The window may not be painted yet.
  waitFor("the text in the picture", [&] {
    const auto windows = workspace->windows();
    if (!isReading && !windows.empty()) {
      isReading = true;
      reading = reader.read(windows.front(), [&](std::vector<PlacedText> lines) {
        for (const auto& line : lines) seen += line.text + "\n";
        isReading = false;
      });
    }
    return seen.find("The train leaves at nine.") != std::string::npos;
  });
  EXPECT_THAT(seen, HasSubstr("Seats are booked"));
}

TEST(TesseractLines, AreMadeOfTheWordsOfATable) {
  const std::string head =
      "level\tpage_num\tblock_num\tpar_num\tline_num\tword_num\tleft\ttop\twidth\theight\tconf\ttext\n";
  const std::string table = head +
                            "4\t1\t1\t1\t1\t0\t20\t40\t200\t30\t-1\t\n"
                            "5\t1\t1\t1\t1\t1\t20\t40\t80\t30\t96.1\tHello\n"
                            "5\t1\t1\t1\t1\t2\t120\t44\t100\t28\t91\tthere,\n"
                            "5\t1\t1\t1\t1\t3\t230\t44\t20\t28\t12\t~|\n"
                            "5\t1\t1\t1\t2\t1\t20\t80\t60\t20\t90\tAnna\n"
                            "not a row\n";
  const std::vector<PlacedText> expected{{"Hello there,", {110, 220, 100, 16}}, {"Anna", {110, 240, 30, 10}}};
  EXPECT_EQ(tesseractLines(table, {100, 200, 2}), expected);
  EXPECT_TRUE(tesseractLines("", {}).empty());
}

}  // namespace
}  // namespace nimbletype
