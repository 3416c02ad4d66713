#include <gtest/gtest.h>

#include <QCoreApplication>
#include <map>

#include "input/insertion/text_injector.h"
#include "input/source/ax_field_source.h"
#include "platform/linux/desktop/x11_workspace.h"
#include "platform/qt/system/qt_main_loop.h"
#include "platform/scripted/drawing/fixed_font_metrics.h"
#include "platform/scripted/keys/recording_event_poster.h"
#include "platform/scripted/keys/scripted_secure_input.h"
#include "platform/scripted/pasteboard/scripted_pasteboard.h"
#include "platform/scripted/system/recording_system_log.h"
#include "tests/platform/linux/accessibility/editor_world.h"
#include "text/text.h"

namespace nimbletype {
namespace {

// The whole way from an editor's window to snapshots, for each toolkit.
class DesktopFieldSource : public testing::TestWithParam<std::string> {
 protected:
  void open(const std::string& content) {
    editor_ = std::make_unique<OpenEditor>(GetParam(), content);
    ax_ = std::make_unique<AtspiAccessibility>();
    workspace_ = std::make_unique<X11Workspace>();
    injector_ =
        std::make_unique<TextInjector>(TextInjector::Services{poster_, *ax_, pasteboard_, loop_, log_});
    source_ = std::make_unique<AXFieldSource>(
        AXFieldSource::Services{*ax_, *workspace_, secureInput_, loop_, log_, fonts_}, *injector_);
    source_->onChange([this](Change change) { ++changes_[change]; });
    source_->start();
    waitUntil("a snapshot of " + GetParam(), [&] { return read().has_value(); });
  }
  std::optional<FieldSnapshot> read() { return snapshot_ = source_->snapshot(); }
  // Qt's plain text editor tells no lines but the first: in the others the caret is measured from the text.
  bool knowsLines() const { return GetParam() != "featherpad"; }
  void insert(const std::string& text, const std::string& before) {
    source_->insert(text, InsertionMethod::accessibility);
    waitUntil("the text before the caret to be \"" + before + "\"",
              [&] { return read() && snapshot_->before == before; });
  }

  int argumentCount_ = 0;
  QCoreApplication application_{argumentCount_, nullptr};
  std::unique_ptr<OpenEditor> editor_;
  RecordingSystemLog log_;
  RecordingEventPoster poster_;
  ScriptedSecureInput secureInput_;
  FixedFontMetrics fonts_;
  QtMainLoop loop_;
  ScriptedPasteboard pasteboard_{loop_};
  std::unique_ptr<AtspiAccessibility> ax_;
  std::unique_ptr<X11Workspace> workspace_;
  std::unique_ptr<TextInjector> injector_;
  std::unique_ptr<AXFieldSource> source_;
  std::map<Change, int> changes_;
  std::optional<FieldSnapshot> snapshot_;
};

TEST_P(DesktopFieldSource, ReadsWhatIsWritten) {
  const std::map<std::string, std::string> names{{"mousepad", "Mousepad"}, {"featherpad", "FeatherPad"}};
  open("tail");
  ASSERT_TRUE(snapshot_);
  EXPECT_EQ(snapshot_->appName, names.at(GetParam()));
  EXPECT_EQ(snapshot_->role, "AXTextArea");
  EXPECT_EQ(snapshot_->before, "");
  EXPECT_EQ(snapshot_->after, "tail");
  EXPECT_FALSE(snapshot_->windowTitle.value_or("").empty());
  EXPECT_EQ(snapshot_->domain, std::nullopt);
  EXPECT_TRUE(snapshot_->fontSize && snapshot_->fontName);
  const FieldSnapshot first = *snapshot_;
  ASSERT_TRUE(first.caretRect && first.fieldFrame);

  waitUntil("no more word of the start", [&] { return changes_[Change::app] > 0; });
  changes_.clear();
  insert("naïve café 😀👍🏽 日本語", "naïve café 😀👍🏽 日本語");
  waitUntil("word of the change", [&] { return changes_[Change::value] > 0; });
  EXPECT_EQ(snapshot_->fieldKey, first.fieldKey);
  EXPECT_EQ(snapshot_->after, "tail");
  ASSERT_TRUE(snapshot_->caretRect);
  EXPECT_GT(snapshot_->caretRect->x, first.caretRect->x);
  EXPECT_EQ(snapshot_->caretRect->width, 1);

  insert("\nnext", "naïve café 😀👍🏽 日本語\nnext");
  ASSERT_TRUE(snapshot_->caretRect);
  const double tolerance = knowsLines() ? 1 : first.caretRect->height / 2;
  EXPECT_GT(snapshot_->caretRect->y, first.caretRect->bottom() - tolerance);
  if (!knowsLines()) return;
  EXPECT_NEAR(snapshot_->lineStartX.value_or(0), first.caretRect->x, 1.5);
}

TEST_P(DesktopFieldSource, FindsTheCaretInALongText) {
  std::string content;
  for (int i = 0; i < 120; ++i) content += "a line of text, number " + std::to_string(i) + " 😀\n";
  open(content);
  ASSERT_TRUE(snapshot_ && snapshot_->fieldFrame);
  const TopLeftRect frame = *snapshot_->fieldFrame;
  const AttributeRead focus{"AXFocusedUIElement", {}};
  const auto field =
      std::get<ObjectRef>(ax_->read(ax_->application(editor_->processID()), std::span(&focus, 1)).at(0));
  const auto line =
      static_cast<std::int64_t>(text::utf16Length(content.substr(0, content.find("number 99"))));
  ASSERT_TRUE(ax_->write(field, "AXSelectedTextRange", TextRange{line, 0}));
  waitUntil("the caret on line 99", [&] { return read() && snapshot_->after.starts_with("number 99 😀\n"); });
  EXPECT_TRUE(snapshot_->before.ends_with("number 98 😀\na line of text, "));
  EXPECT_LE(snapshot_->before.size(), 3000u * 4);
  waitUntil("the caret inside the field after scrolling", [&] {
    return read() && snapshot_->caretRect && snapshot_->caretRect->y > frame.y &&
           snapshot_->caretRect->bottom() < frame.bottom() + 1;
  });
}

INSTANTIATE_TEST_SUITE_P(Desktop, DesktopFieldSource, testing::Values("mousepad", "featherpad"),
                         [](const auto& test) { return test.param; });

}  // namespace
}  // namespace nimbletype
