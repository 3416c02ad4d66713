#include "platform/scripted/accessibility/scripted_accessibility.h"

#include "platform/scripted/desktop/scripted_workspace.h"
#include "platform/scripted/system/virtual_main_loop.h"
#include "tests/platform/accessibility/accessibility_conformance.h"
#include "tests/platform/desktop/workspace_conformance.h"

namespace nimbletype::conformance {
namespace {

constexpr std::int64_t process = 42;

class ScriptedWorld final : public AccessibilityWorld {
 public:
  ScriptedWorld() {
    const ObjectRef application = ax_.addApplication(process);
    ScriptedElement window;
    window.attributes = {{"AXRole", std::string("AXWindow")}, {"AXTitle", std::string("Untitled")}};
    const ObjectRef windowRef = ax_.addChild(application, window);
    ScriptedElement field;
    field.attributes = {{"AXRole", std::string("AXTextArea")}, {"AXFrame", TopLeftRect{100, 100, 400, 300}}};
    field.textOrigin = {104, 104, 8, 16};
    field.text = text::toUtf16(fieldText);
    field.hasMarkers = true;
    ax_.focus(process, ax_.addChild(windowRef, field));
    ax_.at(application).attributes["AXFocusedWindow"] = windowRef;
  }
  Accessibility& accessibility() override { return ax_; }
  std::int64_t processID() override { return process; }
  void waitFor(const std::string& what, const std::function<bool()>& condition) override {
    loop_.runPosted();
    ASSERT_TRUE(condition()) << "waited for " << what;
  }

 private:
  VirtualMainLoop loop_;
  ScriptedAccessibility ax_{loop_};
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
                         ::testing::Values(AccessibilityWorldFactory{
                             "scripted", [] { return std::make_unique<ScriptedWorld>(); }}));
INSTANTIATE_TEST_SUITE_P(Scripted, WorkspaceConformance,
                         ::testing::Values(WorkspaceWorldFactory{
                             "scripted", [] { return std::make_unique<ScriptedWorkspaceWorld>(); }}));

}  // namespace
}  // namespace nimbletype::conformance
