#include "platform/scripted/accessibility/scripted_accessibility.h"

#include "platform/scripted/desktop/scripted_workspace.h"
#include "tests/platform/accessibility/accessibility_conformance.h"
#include "tests/platform/desktop/workspace_conformance.h"
#include "tests/platform/scripted/virtual_time.h"

namespace nimbletype::conformance {
namespace {

class ScriptedWorld final : public AccessibilityWorld {
 public:
  ScriptedWorld() {
    const ObjectRef application = ax_.addApplication(processID());
    ScriptedElement window;
    window.attributes = {{"AXRole", std::string("AXWindow")}, {"AXTitle", std::string("Untitled")}};
    const ObjectRef windowRef = ax_.addChild(application, window);
    ScriptedElement field;
    field.attributes = {{"AXRole", std::string("AXTextArea")}, {"AXFrame", TopLeftRect{100, 100, 400, 300}}};
    field.textOrigin = {104, 104, 8, 16};
    field.text = text::toUtf16(fieldText);
    field.hasMarkers = true;
    ax_.focus(processID(), ax_.addChild(windowRef, field));
    ax_.at(application).attributes["AXFocusedWindow"] = windowRef;
  }
  Accessibility& accessibility() override { return ax_; }
  std::int64_t processID() override { return 42; }
  void waitFor(const std::string& what, const std::function<bool()>& condition) override {
    time_.waitFor(what, condition);
  }

 private:
  VirtualTime time_;
  ScriptedAccessibility ax_{time_.loop};
};

class ScriptedWorkspaceWorld final : public WorkspaceWorld {
 public:
  Workspace& workspace() override { return workspace_; }
  RunningApp app(int index) override { return {10 + index, "org.app" + std::to_string(index), "App", {}}; }
  void bringToFront(int index) override {
    const auto window = [&](int i) {
      const auto id = static_cast<std::uint64_t>(i + 1);
      return ScreenWindow{id, app(i), "Window " + std::to_string(i), {0, 0, 200, 100}};
    };
    workspace_.onScreen = {window(index), window(1 - index)};
    workspace_.bringToFront(app(index));
  }
  void waitFor(const std::string& what, const std::function<bool()>& condition) override {
    ASSERT_TRUE(condition()) << "waited for " << what;
  }

 private:
  ScriptedWorkspace workspace_;
};

INSTANTIATE_TEST_SUITE_P(Scripted, AccessibilityConformance,
                         testing::Values(&makeAccessibilityWorld<ScriptedWorld>));
INSTANTIATE_TEST_SUITE_P(Scripted, WorkspaceConformance,
                         testing::Values(&makeWorkspaceWorld<ScriptedWorkspaceWorld>));

}  // namespace
}  // namespace nimbletype::conformance
