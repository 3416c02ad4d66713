#include "platform/linux/desktop/x11_clients.h"

#include <unistd.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

#include "platform/linux/desktop/user_processes.h"
#include "text/text.h"

namespace nimbletype {
namespace {

constexpr std::uint32_t longestProperty = 1024;  // in four-byte units

using Property = XcbReply<xcb_get_property_reply_t>;

std::string_view bytesOf(const Property& reply) {
  if (!reply) return {};
  return {static_cast<const char*>(xcb_get_property_value(reply.get())),
          static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))};
}

std::vector<std::uint32_t> numbersIn(const Property& reply) {
  if (!reply || reply->format != 32) return {};
  const auto* first = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
  return {first, first + reply->value_len};
}

std::optional<std::uint32_t> numberIn(const Property& reply) {
  const auto numbers = numbersIn(reply);
  return numbers.empty() ? std::nullopt : std::optional(numbers.front());
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

X11Clients::X11Clients(std::shared_ptr<DesktopEntries> entries, Listener changed)
    : connection_(connectToDisplay("")), entries_(std::move(entries)), changed_(std::move(changed)) {
  if (!connection_) return;
  activeWindow_ = atomNamed(connection(), "_NET_ACTIVE_WINDOW");
  clients_ = atomNamed(connection(), "_NET_CLIENT_LIST");
  stacking_ = atomNamed(connection(), "_NET_CLIENT_LIST_STACKING");
  processID_ = atomNamed(connection(), "_NET_WM_PID");
  title_ = atomNamed(connection(), "_NET_WM_NAME");
  gtkApplicationID_ = atomNamed(connection(), "_GTK_APPLICATION_ID");
  close_ = atomNamed(connection(), "_NET_CLOSE_WINDOW");
  protocols_ = atomNamed(connection(), "WM_PROTOCOLS");
  deleteWindow_ = atomNamed(connection(), "WM_DELETE_WINDOW");
  const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
  xcb_change_window_attributes(connection(), rootWindow(connection()), XCB_CW_EVENT_MASK, &events);
  source_ = std::make_unique<XcbSource>(connection(), [this](const xcb_generic_event_t& e) { handle(e); });
}

std::optional<xcb_window_t> X11Clients::active() const {
  if (!connection_) return std::nullopt;
  const auto window = numberIn(answer(ask(rootWindow(connection()), activeWindow_, XCB_ATOM_WINDOW)));
  return window && *window != XCB_WINDOW_NONE ? window : std::nullopt;
}

std::vector<xcb_window_t> X11Clients::all() const {
  return listed(clients_);
}

std::vector<xcb_window_t> X11Clients::stacked() const {
  return listed(stacking_);
}

// All asked before the first answer is awaited.
std::optional<RunningApp> X11Clients::appOf(xcb_window_t window) {
  const auto askedProcess = ask(window, processID_, XCB_ATOM_CARDINAL);
  const auto askedClass = ask(window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING);
  const auto askedGtk = ask(window, gtkApplicationID_, XCB_ATOM_ANY);
  const auto process = numberIn(answer(askedProcess));
  const auto windowClass = answer(askedClass);
  const auto gtk = answer(askedGtk);
  if (!process) return std::nullopt;
  WindowIdentity identity = identityFrom(bytesOf(windowClass));
  identity.gtkApplicationID = bytesOf(gtk);
  identity.executable = executableOf(static_cast<pid_t>(*process));
  return runningApp(static_cast<pid_t>(*process), entries_->of(identity));
}

std::optional<ScreenWindow> X11Clients::inSight(xcb_window_t window) {
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
  const auto title = answer(askedTitle), name = answer(askedName);
  if (!state || state->map_state != XCB_MAP_STATE_VIEWABLE || !size || !place) return std::nullopt;
  auto app = appOf(window);
  if (!app) return std::nullopt;
  const std::string_view shown = bytesOf(title).empty() ? bytesOf(name) : bytesOf(title);
  return ScreenWindow{window, std::move(*app), text::repaired(shown),
                      TopLeftRect{static_cast<double>(place->dst_x), static_cast<double>(place->dst_y),
                                  static_cast<double>(size->width), static_cast<double>(size->height)}};
}

bool X11Clients::canAskToClose(xcb_window_t window) const {
  const auto protocols = numbersIn(answer(ask(window, protocols_, XCB_ATOM_ATOM)));
  return std::ranges::find(protocols, deleteWindow_) != protocols.end();
}

void X11Clients::askToClose(xcb_window_t window) {
  xcb_client_message_event_t message{};
  message.response_type = XCB_CLIENT_MESSAGE;
  message.format = 32;
  message.window = window;
  message.type = close_;
  message.data.data32[1] = 2;  // as a pager would ask
  xcb_send_event(connection(), 0, rootWindow(connection()),
                 XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                 reinterpret_cast<const char*>(&message));
  xcb_flush(connection());
}

xcb_get_property_cookie_t X11Clients::ask(xcb_window_t window, xcb_atom_t name, xcb_atom_t type) const {
  return xcb_get_property(connection(), 0, window, name, type, 0, longestProperty);
}

X11Clients::Property X11Clients::answer(xcb_get_property_cookie_t asked) const {
  return Property(xcb_get_property_reply(connection(), asked, nullptr));
}

std::vector<xcb_window_t> X11Clients::listed(xcb_atom_t name) const {
  if (!connection_) return {};
  return numbersIn(answer(ask(rootWindow(connection()), name, XCB_ATOM_WINDOW)));
}

void X11Clients::handle(const xcb_generic_event_t& event) {
  if ((event.response_type & 0x7f) != XCB_PROPERTY_NOTIFY) return;
  const auto& notify = reinterpret_cast<const xcb_property_notify_event_t&>(event);
  if (notify.atom == activeWindow_) changed_(Change::front);
  if (notify.atom == clients_) changed_(Change::windows);
}

}  // namespace nimbletype
