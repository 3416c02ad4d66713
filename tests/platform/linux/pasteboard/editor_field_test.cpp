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
#include "text/text.h"

namespace nimbletype {
namespace {

// A real editor of each toolkit, another application whose copy must survive, the whole way from the editor's
// window to snapshots and that of accepted text back to it.
class EditorField : public testing::TestWithParam<const char*> {
 protected:
  EditorField() {
    source_.onChange([this](Change change) { valueTold_ |= change == Change::value; });
    source_.start();
    waitFor(std::string("a snapshot of ") + GetParam(), [&] { return source_.snapshot().has_value(); });
  }
  FieldSnapshot read() { return source_.snapshot().value_or(FieldSnapshot{.before = "no field"}); }
  void expectBefore(const std::string& text) {
    waitFor("the text before the caret to be \"" + text + "\"", [&] { return read().before == text; });
  }
  FieldSnapshot write(const std::string& text, const std::string& before) {
    source_.insert(text, InsertionMethod::accessibility);
    expectBefore(before);
    return read();
  }
  // The clipboard hint goes away with the text it belongs to.
  void expectClipboardToComeBack(const ClipboardApplication::Formats& formats) {
    waitFor("the clipboard to come back",
            [&] { return !other_.paste().contains("x-kde-passwordManagerHint"); });
    const auto found = other_.paste();
    for (const auto& [format, data] : formats) {
      ASSERT_TRUE(found.contains(format)) << format;
      EXPECT_TRUE(found.at(format) == data) << format;
    }
  }

  int noArguments_ = 0;
  OpenEditor editor_{GetParam(), ""};
  QCoreApplication application_{noArguments_, nullptr};
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
  bool valueTold_ = false;
};

TEST_P(EditorField, IsReadWithItsCaret) {
  // Qt's plain text editor tells no lines but the first: in the others the caret is measured from the text.
  const bool knowsLines = GetParam() == std::string("mousepad");
  const FieldSnapshot first = read();
  EXPECT_EQ(first.appName, knowsLines ? "Mousepad" : "FeatherPad");
  EXPECT_EQ(first.role, "AXTextArea");
  EXPECT_FALSE(first.windowTitle.value_or("").empty());
  EXPECT_EQ(first.domain, std::nullopt);
  const TopLeftRect start = first.caretRect.value(), frame = first.fieldFrame.value();

  const std::string line = "naïve café 😀👍🏽 日本語";
  valueTold_ = false;
  const FieldSnapshot further = write(line, line);
  waitFor("word of the change", [&] { return valueTold_; });
  EXPECT_EQ(further.fieldKey, first.fieldKey);
  EXPECT_TRUE(further.fontSize && further.fontName);
  EXPECT_GT(further.caretRect.value().x, start.x);
  const FieldSnapshot below = write("\nnext", line + "\nnext");
  EXPECT_GT(below.caretRect.value().y, start.bottom() - (knowsLines ? 1 : start.height / 2));
  if (knowsLines) {
    EXPECT_NEAR(below.lineStartX.value_or(0), start.x, 1.5);
  }

  std::string many;
  for (int i = 0; i < 120; ++i) many += "a line of text, number " + std::to_string(i) + " 😀\n";
  source_.insert(many, InsertionMethod::accessibility);
  waitFor("the caret behind it", [&] { return read().before.ends_with("number 119 😀\n"); });
  const AttributeRead focus{"AXFocusedUIElement", {}};
  const auto field =
      std::get<ObjectRef>(ax_.read(ax_.application(editor_.processID()), std::span(&focus, 1)).at(0));
  const std::string before = line + "\nnext" + many.substr(0, many.find("number 99"));
  ASSERT_TRUE(ax_.write(field, "AXSelectedTextRange",
                        TextRange{static_cast<std::int64_t>(text::utf16Length(before)), 0}));
  waitFor("the caret on line 99", [&] { return read().after.starts_with("number 99 😀\n"); });
  EXPECT_TRUE(read().before.ends_with("number 98 😀\na line of text, "));
  EXPECT_LE(read().before.size(), 3000u * 4);
  waitFor("the caret inside the field after scrolling", [&] {
    const auto caret = read().caretRect;
    return caret && caret->y > frame.y && caret->bottom() < frame.bottom() + 1;
  });
}

TEST_P(EditorField, PastesAndBringsEveryFormatBack) {
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
  expectClipboardToComeBack(theirs);
}

TEST_P(EditorField, ThatHangsGetsItsTextLater) {
  other_.copy({{"text/plain", "theirs"}});
  const auto editor = static_cast<pid_t>(editor_.processID());
  source_.insert("late", InsertionMethod::paste);
  kill(editor, SIGSTOP);
  rest(Milliseconds(900));
  kill(editor, SIGCONT);
  expectBefore("late");
  expectClipboardToComeBack({{"text/plain", "theirs"}});
}

TEST_P(EditorField, TakesTextByWhateverWayItNeeds) {
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

TEST_P(EditorField, LosesWholeCharacters) {
  write("a👩‍👩‍👧🇩🇪", "a👩‍👩‍👧🇩🇪");
  source_.deleteBackwards(2);
  expectBefore("a");
  write("bc teh", "abc teh");
  source_.deleteBackwards(3);
  write("the", "abc the");
}

INSTANTIATE_TEST_SUITE_P(Desktop, EditorField, testing::Values("mousepad", "featherpad"),
                         [](const auto& test) { return test.param; });

}  // namespace
}  // namespace nimbletype
