#include "platform/linux/desktop/x11_workspace.h"

#include <unistd.h>

#include <filesystem>
#include <string>
#include <string_view>

#include "platform/linux/desktop/desktop_entries.h"
#include "platform/linux/x11/xcb_source.h"
#include "text/text.h"

namespace nimbletype {
namespace {

constexpr std::uint32_t longestProperty = 256;  // in four-byte units

std::string executableOf(std::int64_t process) {
  std::error_code error;
  const auto path = std::filesystem::read_symlink("/proc/" + std::to_string(process) + "/exe", error);
  return error ? std::string() : path.filename().string();
}

// The two texts of a WM_CLASS property, each ended by a NUL.
WindowIdentity identityFrom(std::string_view windowClass) {
  WindowIdentity identity;
  const std::size_t end = windowClass.find('\0');
  identity.instanceName = windowClass.substr(0, end);
  if (end != std::string_view::npos) {
    windowClass.remove_prefix(end + 1);
    identity.className = windowClass.substr(0, windowClass.find('\0'));
  }
  return identity;
}

}  // namespace

class X11Workspace::Impl {
 public:
  Impl() : connection_(connectToDisplay("")) {
    if (!connection_) return;
    activeWindow_ = atomNamed(connection(), "_NET_ACTIVE_WINDOW");
    processID_ = atomNamed(connection(), "_NET_WM_PID");
    stacking_ = atomNamed(connection(), "_NET_CLIENT_LIST_STACKING");
    title_ = atomNamed(connection(), "_NET_WM_NAME");
    gtkApplicationID_ = atomNamed(connection(), "_GTK_APPLICATION_ID");
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(connection(), rootWindow(connection()), XCB_CW_EVENT_MASK, &events);
    source_ = std::make_unique<XcbSource>(connection(), [this](const xcb_generic_event_t& e) { handle(e); });
  }

  std::optional<RunningApp> frontmost() {
    if (!connection_) return std::nullopt;
    const auto window = number(rootWindow(connection()), activeWindow_, XCB_ATOM_WINDOW);
    return window && *window != XCB_WINDOW_NONE ? appOf(*window) : std::nullopt;
  }

  // The window manager lists them from the bottom up.
  std::vector<ScreenWindow> windows() {
    std::vector<ScreenWindow> found;
    if (!connection_) return found;
    const auto list = property(ask(rootWindow(connection()), stacking_, XCB_ATOM_WINDOW));
    if (!list || list->format != 32) return found;
    const auto* first = static_cast<const xcb_window_t*>(xcb_get_property_value(list.get()));
    for (std::uint32_t i = list->value_len; i-- > 0;)
      if (auto window = describe(first[i])) found.push_back(std::move(*window));
    return found;
  }

  void listen(std::function<void()> changed) {
    changed_ = std::move(changed);
    last_ = frontmost();
  }

 private:
  xcb_connection_t* connection() const { return connection_.get(); }

  XcbReply<xcb_get_property_reply_t> property(xcb_get_property_cookie_t cookie) const {
    return XcbReply<xcb_get_property_reply_t>(xcb_get_property_reply(connection(), cookie, nullptr));
  }

  xcb_get_property_cookie_t ask(xcb_window_t window, xcb_atom_t name, xcb_atom_t type) const {
    return xcb_get_property(connection(), 0, window, name, type, 0, longestProperty);
  }

  static std::string_view bytesOf(const XcbReply<xcb_get_property_reply_t>& reply) {
    if (!reply) return {};
    return {static_cast<const char*>(xcb_get_property_value(reply.get())),
            static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))};
  }

  static std::optional<std::uint32_t> numberIn(const XcbReply<xcb_get_property_reply_t>& reply) {
    if (!reply || reply->format != 32 || reply->value_len == 0) return std::nullopt;
    return *static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
  }

  std::optional<std::uint32_t> number(xcb_window_t window, xcb_atom_t name, xcb_atom_t type) const {
    return numberIn(property(ask(window, name, type)));
  }

  // All asked before the first answer is awaited.
  std::optional<RunningApp> appOf(xcb_window_t window) {
    const auto askedProcess = ask(window, processID_, XCB_ATOM_CARDINAL);
    const auto askedClass = ask(window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING);
    const auto askedGtk = ask(window, gtkApplicationID_, XCB_ATOM_ANY);
    const auto process = numberIn(property(askedProcess));
    const auto windowClass = property(askedClass);
    const auto gtk = property(askedGtk);
    if (!process) return std::nullopt;
    WindowIdentity identity = identityFrom(bytesOf(windowClass));
    identity.gtkApplicationID = bytesOf(gtk);
    identity.executable = executableOf(*process);
    const DesktopEntry entry = entries_.of(identity);
    return RunningApp{*process, entry.id,         entry.name,
                      {},       entry.isTerminal, static_cast<pid_t>(*process) == getpid()};
  }

  std::optional<ScreenWindow> describe(xcb_window_t window) {
    const auto askedState = xcb_get_window_attributes(connection(), window);
    const auto askedSize = xcb_get_geometry(connection(), window);
    const auto askedPlace = xcb_translate_coordinates(connection(), window, rootWindow(connection()), 0, 0);
    const auto askedTitle = ask(window, title_, XCB_ATOM_ANY);
    const auto askedName = ask(window, XCB_ATOM_WM_NAME, XCB_ATOM_ANY);
    using Attributes = XcbReply<xcb_get_window_attributes_reply_t>;
    const Attributes state(xcb_get_window_attributes_reply(connection(), askedState, nullptr));
    const XcbReply<xcb_get_geometry_reply_t> size(xcb_get_geometry_reply(connection(), askedSize, nullptr));
    using Place = XcbReply<xcb_translate_coordinates_reply_t>;
    const Place place(xcb_translate_coordinates_reply(connection(), askedPlace, nullptr));
    const auto title = property(askedTitle), name = property(askedName);
    if (!state || state->map_state != XCB_MAP_STATE_VIEWABLE || !size || !place) return std::nullopt;
    auto app = appOf(window);
    if (!app) return std::nullopt;
    const std::string_view shown = bytesOf(title).empty() ? bytesOf(name) : bytesOf(title);
    return ScreenWindow{window, std::move(*app), text::repaired(shown),
                        TopLeftRect{static_cast<double>(place->dst_x), static_cast<double>(place->dst_y),
                                    static_cast<double>(size->width), static_cast<double>(size->height)}};
  }

  void handle(const xcb_generic_event_t& event) {
    if ((event.response_type & 0x7f) != XCB_PROPERTY_NOTIFY) return;
    const auto& notify = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    if (notify.atom != activeWindow_ || !changed_) return;
    auto now = frontmost();
    if (now == last_) return;
    last_ = std::move(now);
    const auto changed = changed_;  // it may end itself
    changed();
  }

  XcbConnection connection_;
  xcb_atom_t activeWindow_ = XCB_ATOM_NONE, processID_ = XCB_ATOM_NONE, gtkApplicationID_ = XCB_ATOM_NONE,
             stacking_ = XCB_ATOM_NONE, title_ = XCB_ATOM_NONE;
  DesktopEntries entries_;
  std::function<void()> changed_;
  std::optional<RunningApp> last_;
  std::unique_ptr<XcbSource> source_;
};

X11Workspace::X11Workspace() : impl_(std::make_unique<Impl>()) {}
X11Workspace::~X11Workspace() = default;

std::optional<RunningApp> X11Workspace::frontmost() {
  return impl_->frontmost();
}
void X11Workspace::onFrontmostChanged(std::function<void()> changed) {
  impl_->listen(std::move(changed));
}
std::vector<ScreenWindow> X11Workspace::windows() {
  return impl_->windows();
}

}  // namespace nimbletype
