#include "platform/linux/accessibility/atspi_accessibility.h"

#include <glib.h>
#include <signal.h>

#include "tests/platform/accessibility/accessibility_conformance.h"
#include "tests/platform/linux/accessibility/editor_world.h"

namespace nimbletype::conformance {
namespace {

class EditorWorld final : public AccessibilityWorld {
 public:
  explicit EditorWorld(const std::string& program, const std::string& content = fieldText)
      : editor_(program, content) {}
  Accessibility& accessibility() override { return ax_; }
  std::int64_t processID() override { return editor_.processID(); }
  void waitFor(const std::string& what, const std::function<bool()>& condition) override {
    waitUntil(what, condition);
  }

 private:
  OpenEditor editor_;  // first: it brings the desktop up
  AtspiAccessibility ax_;
};

AccessibilityWorldFactory world(const std::string& program) {
  return {program, [program] { return std::make_unique<EditorWorld>(program); }};
}

INSTANTIATE_TEST_SUITE_P(Gtk, AccessibilityConformance, ::testing::Values(world("mousepad")));
INSTANTIATE_TEST_SUITE_P(Qt, AccessibilityConformance, ::testing::Values(world("featherpad")));

// A stopped application answers nothing, holds up nothing else, and is read again once it goes on.
TEST(AtspiAccessibility, LeavesAHungApplicationAlone) {
  EditorWorld world("mousepad", "text");
  Accessibility& ax = world.accessibility();
  const std::vector<AttributeRead> reads{{"AXRole", {}}, {"AXSelectedTextRange", {}}, {"AXFrame", {}}};
  ObjectRef field;
  world.waitFor("a focused element", [&] {
    const AttributeRead focus{"AXFocusedUIElement", {}};
    const ObjectRef application = ax.application(world.processID());
    const auto found = ax.read(application, std::span(&focus, 1)).at(0);
    field = std::holds_alternative<ObjectRef>(found) ? std::get<ObjectRef>(found) : nullptr;
    return field != nullptr;
  });
  ASSERT_TRUE(field);

  bool reentered = false;
  const guint idle = g_idle_add(
      [](gpointer flag) -> gboolean {
        *static_cast<bool*>(flag) = true;
        return G_SOURCE_CONTINUE;
      },
      &reentered);
  ASSERT_EQ(kill(static_cast<pid_t>(world.processID()), SIGSTOP), 0);
  const auto whileStopped = ax.read(field, reads);
  EXPECT_FALSE(ax.write(field, "AXSelectedText", std::string("x")));
  ASSERT_EQ(kill(static_cast<pid_t>(world.processID()), SIGCONT), 0);
  EXPECT_FALSE(reentered);
  g_source_remove(idle);
  EXPECT_EQ(whileStopped, std::vector<AttributeValue>(reads.size()));
  world.waitFor("the application answering again",
                [&] { return ax.read(field, reads).at(0) == AttributeValue(std::string("AXTextArea")); });
}

TEST(AtspiAccessibility, KnowsNothingOfAnElementThatIsGone) {
  auto editor = std::make_unique<OpenEditor>("mousepad", "text");
  AtspiAccessibility ax;
  ObjectRef application;
  waitUntil("the application",
            [&] { return (application = ax.application(editor->processID())) != nullptr; });
  const auto process = editor->processID();
  editor.reset();
  waitUntil("the application's end", [&] { return ax.application(process) == nullptr; });
  const std::vector<AttributeRead> reads{{"AXRole", {}}, {"AXFocusedUIElement", {}}, {"AXFocusedWindow", {}}};
  EXPECT_EQ(ax.read(application, reads), std::vector<AttributeValue>(reads.size()));
  EXPECT_FALSE(ax.observe(process, [](std::string_view, const ObjectRef&) {}));
}

}  // namespace
}  // namespace nimbletype::conformance
