#pragma once
#include <functional>
#include <memory>

#include "platform/linux/pasteboard/selection_owner.h"
#include "platform/linux/x11/xcb_source.h"

namespace nimbletype {

// Serves the clipboard from a thread of its own: an application that pastes waits for its owner, and the main
// thread may be waiting for that very application at the time.
class SelectionServer {
 public:
  // None without a display.
  static std::unique_ptr<SelectionServer> start(const std::string& display);
  ~SelectionServer();
  SelectionServer(const SelectionServer&) = delete;
  SelectionServer& operator=(const SelectionServer&) = delete;

  // Calls the owner on its thread and returns what it answers. Takes no longer than a look at the X server.
  template <typename Ask>
  auto ask(Ask question) {
    std::invoke_result_t<Ask, SelectionOwner&> answer{};
    thread_.run([&] { answer = question(*owner_); });
    return answer;
  }

 private:
  explicit SelectionServer(XcbConnection connection);
  void handle(const xcb_generic_event_t& event);

  XcbConnection connection_;
  SelectionAtoms atoms_;
  std::uint8_t firstFixesEvent_ = 0;
  GlibThread thread_;
  std::unique_ptr<SelectionOwner> owner_;  // these two on the thread alone
  std::unique_ptr<XcbSource> source_;
};

}  // namespace nimbletype
