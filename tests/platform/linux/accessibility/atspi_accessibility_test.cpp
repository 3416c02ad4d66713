#include "platform/linux/accessibility/atspi_accessibility.h"

#include <glib.h>
#include <signal.h>

#include "tests/platform/accessibility/accessibility_conformance.h"
#include "tests/platform/linux/accessibility/editor_world.h"

namespace nimbletype::conformance {
namespace {

class EditorWorld : public AccessibilityWorld {
 public:
  explicit EditorWorld(const char* program) : editor_(program, fieldText) {}
  Accessibility& accessibility() override { return ax_; }
  std::int64_t processID() override { return editor_.processID(); }
  void waitFor(const std::string& what, const std::function<bool()>& condition) override {
    nimbletype::waitFor(what, condition);
  }

 private:
  OpenEditor editor_;  // first: it brings the desktop up
  AtspiAccessibility ax_;
};

struct Mousepad : EditorWorld {
  Mousepad() : EditorWorld("mousepad") {}
};
struct Featherpad : EditorWorld {
  Featherpad() : EditorWorld("featherpad") {}
};
INSTANTIATE_TEST_SUITE_P(Gtk, AccessibilityConformance, testing::Values(&makeAccessibilityWorld<Mousepad>));
INSTANTIATE_TEST_SUITE_P(Qt, AccessibilityConformance, testing::Values(&makeAccessibilityWorld<Featherpad>));

// A stopped application answers nothing, holds up nothing else, and is read again once it goes on.
TEST(AtspiAccessibility, LeavesAHungApplicationAlone) {
  Mousepad world;
  Accessibility& ax = world.accessibility();
  const std::vector<AttributeRead> reads{{"AXRole", {}}, {"AXSelectedTextRange", {}}, {"AXFrame", {}}};
  const AttributeRead focus{"AXFocusedUIElement", {}};
  AttributeValue field;
  waitFor("a focused element", [&] {
    field = ax.read(ax.application(world.processID()), std::span(&focus, 1)).at(0);
    return std::holds_alternative<ObjectRef>(field);
  });
  const auto element = std::get<ObjectRef>(field);
  const auto process = static_cast<pid_t>(world.processID());
  bool reentered = false;
  const guint idle = g_idle_add(
      [](gpointer flag) -> gboolean {
        *static_cast<bool*>(flag) = true;
        return G_SOURCE_CONTINUE;
      },
      &reentered);
  ASSERT_EQ(kill(process, SIGSTOP), 0);
  const auto whileStopped = ax.read(element, reads);
  EXPECT_FALSE(ax.write(element, "AXSelectedText", std::string("x")));
  ASSERT_EQ(kill(process, SIGCONT), 0);
  EXPECT_FALSE(reentered);
  g_source_remove(idle);
  EXPECT_EQ(whileStopped, std::vector<AttributeValue>(reads.size()));
  waitFor("the application answering again",
          [&] { return ax.read(element, reads).at(0) == AttributeValue(std::string("AXTextArea")); });
}

TEST(AtspiAccessibility, KnowsNothingOfAnElementThatIsGone) {
  auto editor = std::make_unique<OpenEditor>("mousepad", "text");
  AtspiAccessibility ax;
  ObjectRef application;
  const auto process = editor->processID();
  waitFor("the application", [&] { return (application = ax.application(process)) != nullptr; });
  editor.reset();
  waitFor("the application's end", [&] { return ax.application(process) == nullptr; });
  const std::vector<AttributeRead> reads{{"AXRole", {}}, {"AXFocusedUIElement", {}}, {"AXFocusedWindow", {}}};
  EXPECT_EQ(ax.read(application, reads), std::vector<AttributeValue>(reads.size()));
  EXPECT_FALSE(ax.observe(process, [](std::string_view, const ObjectRef&) {}));
}

}  // namespace
}  // namespace nimbletype::conformance
