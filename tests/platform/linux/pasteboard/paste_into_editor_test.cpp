#include <gtest/gtest.h>

#include <QCoreApplication>
#include <csignal>

#include "input/insertion/text_injector.h"
#include "input/source/ax_field_source.h"
#include "platform/linux/accessibility/atspi_accessibility.h"
#include "platform/linux/desktop/x11_workspace.h"
#include "platform/linux/keys/xcb_event_poster.h"
#include "platform/linux/pasteboard/x11_pasteboard.h"
#include "platform/qt/system/qt_main_loop.h"
#include "platform/scripted/drawing/fixed_font_metrics.h"
#include "platform/scripted/keys/scripted_secure_input.h"
#include "platform/scripted/system/recording_system_log.h"
#include "tests/platform/linux/accessibility/editor_world.h"
#include "tests/platform/linux/pasteboard/clipboard_application.h"

namespace nimbletype {
namespace {

int noArguments = 0;

// A real editor, another application whose copy must survive, and the whole way that accepted text takes.
class EditorInsertion : public testing::TestWithParam<std::string> {
 protected:
  EditorInsertion() {
    source_.start();
    waitUntil("a snapshot of " + GetParam(), [&] { return source_.snapshot().has_value(); });
  }
  std::string before() {
    const auto snapshot = source_.snapshot();
    return snapshot ? snapshot->before : "no field";
  }
  void expectBefore(const std::string& text) {
    waitUntil("the text before the caret to be \"" + text + "\"", [&] { return before() == text; });
  }
  void expectOnClipboard(const ClipboardApplication::Formats& formats) {
    const auto found = other_.paste();
    for (const auto& [format, data] : formats) {
      ASSERT_TRUE(found.contains(format)) << format;
      EXPECT_TRUE(found.at(format) == data) << format;
    }
    EXPECT_FALSE(found.contains("x-kde-passwordManagerHint"));
  }

  OpenEditor editor_{GetParam(), ""};
  QCoreApplication application_{noArguments, nullptr};
  QtMainLoop loop_;
  RecordingSystemLog log_;
  ScriptedSecureInput secureInput_;
  FixedFontMetrics fonts_;
  AtspiAccessibility ax_;
  X11Workspace workspace_;
  XcbEventPoster poster_{loop_, [] { return 0u; }};
  X11Pasteboard pasteboard_{loop_};
  TextInjector injector_{{poster_, ax_, pasteboard_, loop_, log_}};
  AXFieldSource source_{{ax_, workspace_, secureInput_, loop_, log_, fonts_}, injector_};
  ClipboardApplication other_;
};

TEST_P(EditorInsertion, PastesAndBringsEveryFormatBack) {
  const ClipboardApplication::Formats theirs{{"text/plain", "theirs"},
                                             {"text/html", "<i>theirs</i>"},
                                             {"image/png", std::string("\x89PNG\0\xFF", 6)},
                                             {"application/x-large", std::string(1'000'000, 'z')}};
  other_.copy(theirs);
  source_.insert("naïve 👩‍👩‍👧 ", InsertionMethod::paste);
  source_.insert("twice", InsertionMethod::paste);
  expectBefore("naïve 👩‍👩‍👧 twice");
  source_.insert(" more", InsertionMethod::paste);
  expectBefore("naïve 👩‍👩‍👧 twice more");
  // The clipboard hint goes away with the text it belongs to.
  waitUntil("the clipboard to come back",
            [&] { return !other_.paste().contains("x-kde-passwordManagerHint"); });
  expectOnClipboard(theirs);
}

TEST_P(EditorInsertion, TheTextWaitsForAnEditorThatHangs) {
  other_.copy({{"text/plain", "theirs"}});
  const auto editor = static_cast<pid_t>(editor_.processID());
  source_.insert("late", InsertionMethod::paste);
  kill(editor, SIGSTOP);
  const auto awake = loop_.now() + Milliseconds(900);
  waitUntil("a while", [&] { return loop_.now() > awake; });
  kill(editor, SIGCONT);
  expectBefore("late");
  waitUntil("the clipboard to come back",
            [&] { return !other_.paste().contains("x-kde-passwordManagerHint"); });
  expectOnClipboard({{"text/plain", "theirs"}});
}

TEST_P(EditorInsertion, TypesByWhateverWayTheTextNeeds) {
  std::string expected;
  for (const std::string& text :
       {std::string("Plain text, "), std::string("naïve “日本語” 👩‍👩‍👧 "),
        std::string("two\nlines "), std::string(200, 'x')}) {
    source_.insert(text, InsertionMethod::typing);
    expected += text;
    expectBefore(expected);
  }
  source_.insert("then 👍🏽", InsertionMethod::typing);
  source_.insert(" at once", InsertionMethod::typing);
  expectBefore(expected + "then 👍🏽 at once");
}

TEST_P(EditorInsertion, DeletesWholeCharacters) {
  source_.insert("a👩‍👩‍👧🇩🇪", InsertionMethod::accessibility);
  expectBefore("a👩‍👩‍👧🇩🇪");
  source_.deleteBackwards(2);
  expectBefore("a");
  source_.insert("bc teh", InsertionMethod::accessibility);
  expectBefore("abc teh");
  source_.deleteBackwards(3);
  source_.insert("the", InsertionMethod::accessibility);
  expectBefore("abc the");
}

INSTANTIATE_TEST_SUITE_P(Desktop, EditorInsertion, testing::Values("mousepad", "featherpad"),
                         [](const auto& test) { return test.param; });

}  // namespace
}  // namespace nimbletype
