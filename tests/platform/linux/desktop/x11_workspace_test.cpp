#include "platform/linux/desktop/x11_workspace.h"

#include <unistd.h>

#include <array>
#include <string>

#include "platform/linux/x11/xcb_support.h"
#include "tests/platform/desktop/workspace_conformance.h"
#include "tests/platform/linux/accessibility/editor_world.h"

namespace nimbletype::conformance {
namespace {

using std::string_literals::operator""s;

// Two plain windows that name themselves as applications do.
class WindowsWorld final : public WorkspaceWorld {
 public:
  WindowsWorld() {
    if (!DesktopSession::start()) return;
    connection_ = connectToDisplay("");
    workspace_ = std::make_unique<X11Workspace>();
    // The window manager gives each new window the focus, in its own time: nothing is asked of it before it
    // has.
    windows_[0] = openWindow("Window 0", "mousepad\0Mousepad"s, "org.xfce.mousepad");
    waitFor("the first window focused", [this] { return workspace_->frontmost() == app(0); });
    windows_[1] = openWindow("Window 1", "some\0Home-made"s, "");
    waitFor("the second window focused", [this] { return workspace_->frontmost() == app(1); });
  }
  Workspace& workspace() override { return *workspace_; }
  RunningApp app(int index) override {
    if (index == 0) return {getpid(), "org.xfce.mousepad", "Mousepad", {}, false, true, "org.xfce.mousepad"};
    return {getpid(), "linux_accessibility_tests", "Home-made", {}, false, true};
  }

  void bringToFront(int index) override {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = windows_[static_cast<std::size_t>(index)];
    message.type = atomNamed(connection_.get(), "_NET_ACTIVE_WINDOW");
    message.data.data32[0] = 2;  // as a pager would ask
    xcb_send_event(connection_.get(), 0, rootWindow(connection_.get()),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&message));
    xcb_flush(connection_.get());
  }
  void waitFor(const std::string& what, const std::function<bool()>& condition) override {
    nimbletype::waitFor(what, condition);
  }

 private:
  void text(xcb_window_t window, xcb_atom_t name, xcb_atom_t type, const std::string& value) {
    xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, window, name, type, 8,
                        static_cast<std::uint32_t>(value.size()), value.data());
  }

  xcb_window_t openWindow(const std::string& title, const std::string& windowClass,
                          const std::string& gtkApplicationID) {
    xcb_connection_t* c = connection_.get();
    const xcb_window_t window = xcb_generate_id(c);
    xcb_create_window(c, XCB_COPY_FROM_PARENT, window, rootWindow(c), 10, 10, 200, 100, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    text(window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, title);
    text(window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, windowClass + '\0');
    if (!gtkApplicationID.empty())
      text(window, atomNamed(c, "_GTK_APPLICATION_ID"), atomNamed(c, "UTF8_STRING"), gtkApplicationID);
    const std::uint32_t process = static_cast<std::uint32_t>(getpid());
    xcb_change_property(c, XCB_PROP_MODE_REPLACE, window, atomNamed(c, "_NET_WM_PID"), XCB_ATOM_CARDINAL, 32,
                        1, &process);
    xcb_map_window(c, window);
    xcb_flush(c);
    return window;
  }

  XcbConnection connection_;
  std::array<xcb_window_t, 2> windows_{};
  std::unique_ptr<X11Workspace> workspace_;
};

INSTANTIATE_TEST_SUITE_P(X11, WorkspaceConformance, testing::Values(&makeWorkspaceWorld<WindowsWorld>));

}  // namespace
}  // namespace nimbletype::conformance
