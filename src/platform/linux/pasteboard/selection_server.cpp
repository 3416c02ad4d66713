#include "platform/linux/pasteboard/selection_server.h"

#include <xcb/xfixes.h>

namespace nimbletype {

std::unique_ptr<SelectionServer> SelectionServer::start(const std::string& display) {
  auto connection = connectToDisplay(display);
  if (!connection) return nullptr;
  return std::unique_ptr<SelectionServer>(new SelectionServer(std::move(connection)));
}

SelectionServer::SelectionServer(XcbConnection connection)
    : connection_(std::move(connection)), atoms_(SelectionAtoms::intern(connection_.get())) {
  thread_.run([this] {
    owner_ = std::make_unique<SelectionOwner>(connection_.get(), atoms_, thread_.context());
    firstFixesEvent_ = followSelection(connection_.get(), owner_->window(), atoms_.clipboard);
    source_ = std::make_unique<XcbSource>(
        connection_.get(), [this](const xcb_generic_event_t& event) { handle(event); }, thread_.context());
  });
}

SelectionServer::~SelectionServer() {
  thread_.run([this] {
    source_.reset();
    owner_.reset();
  });
}

void SelectionServer::handle(const xcb_generic_event_t& event) {
  if (firstFixesEvent_ == 0 || (event.response_type & 0x7f) != firstFixesEvent_) return owner_->handle(event);
  const auto& notify = reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(event);
  if (notify.owner == owner_->window()) owner_->setClaimedAt(notify.selection_timestamp);
}

}  // namespace nimbletype
