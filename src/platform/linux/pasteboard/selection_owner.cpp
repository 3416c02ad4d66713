#include "platform/linux/pasteboard/selection_owner.h"

#include <algorithm>
#include <array>

namespace nimbletype {
namespace {

// Servers take requests of 256 KiB; what is larger goes in pieces.
constexpr std::size_t largestPiece = 192UZ * 1024;
// An application that stops fetching is given up.
constexpr Milliseconds transferPatience{5000};

}  // namespace

SelectionOwner::SelectionOwner(xcb_connection_t* connection, const SelectionAtoms& atoms,
                               GMainContext* context)
    : connection_(connection), atoms_(atoms), context_(context), window_(createHiddenWindow(connection, 0)) {}

bool SelectionOwner::offer(std::shared_ptr<const SelectionFormats> formats, xcb_timestamp_t time) {
  offered_ = std::move(formats);
  textWasRead_ = false;
  xcb_set_selection_owner(connection_, window_, atoms_.clipboard, time);
  if (!isOwner()) offered_.reset();
  return offered_ != nullptr;
}

bool SelectionOwner::release(xcb_timestamp_t time) {
  offered_.reset();
  xcb_set_selection_owner(connection_, XCB_WINDOW_NONE, atoms_.clipboard, time);
  return currentOwner() == XCB_WINDOW_NONE;
}

xcb_window_t SelectionOwner::currentOwner() const {
  const XcbReply<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
      connection_, xcb_get_selection_owner(connection_, atoms_.clipboard), nullptr));
  return reply ? reply->owner : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
}

void SelectionOwner::handle(const xcb_generic_event_t& event) {
  const int type = event.response_type & 0x7f;
  if (type == XCB_SELECTION_REQUEST)
    return answer(reinterpret_cast<const xcb_selection_request_event_t&>(event));
  // It may tell of a loss that has been made good since.
  if (type == XCB_SELECTION_CLEAR && !isOwner()) offered_.reset();
  if (type == XCB_PROPERTY_NOTIFY) {
    const auto& notify = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    const auto transfer = std::ranges::find_if(transfers_, [&](const Transfer& t) {
      return t.window == notify.window && t.property == notify.atom;
    });
    if (notify.state == XCB_PROPERTY_DELETE && transfer != transfers_.end()) sendNext(transfer);
  }
  if (type == XCB_DESTROY_NOTIFY) {
    const auto& notify = reinterpret_cast<const xcb_destroy_notify_event_t&>(event);
    std::erase_if(transfers_, [&](const Transfer& t) { return t.window == notify.window; });
  }
}

void SelectionOwner::answer(const xcb_selection_request_event_t& request) {
  // Old clients leave the choice of the property to the owner.
  const xcb_atom_t property = request.property == XCB_ATOM_NONE ? request.target : request.property;
  const bool done = request.owner == window_ && request.selection == atoms_.clipboard && offered_ &&
                    convert(request.requestor, request.target, property);
  xcb_selection_notify_event_t notify{};
  notify.response_type = XCB_SELECTION_NOTIFY;
  notify.time = request.time;
  notify.requestor = request.requestor;
  notify.selection = request.selection;
  notify.target = request.target;
  notify.property = done ? property : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
  xcb_send_event(connection_, 0, request.requestor, XCB_EVENT_MASK_NO_EVENT,
                 reinterpret_cast<const char*>(&notify));
  xcb_flush(connection_);
}

bool SelectionOwner::convert(xcb_window_t window, xcb_atom_t target, xcb_atom_t property) {
  if (target == atoms_.multiple) return convertSeveral(window, property);
  if (target == atoms_.timestamp) {
    put(window, property, XCB_ATOM_INTEGER, std::array<std::uint32_t, 1>{claimedAt_});
    return true;
  }
  if (target == atoms_.targets) {
    std::vector<std::uint32_t> targets{atoms_.targets, atoms_.multiple, atoms_.timestamp};
    for (const SelectionFormat& format : *offered_) targets.push_back(format.target);
    put(window, property, XCB_ATOM_ATOM, targets);
    return true;
  }
  const auto format = std::ranges::find(*offered_, target, &SelectionFormat::target);
  return format != offered_->end() && put(window, property, *format);
}

// The property lists pairs of target and property; what cannot be had is struck out there.
bool SelectionOwner::convertSeveral(xcb_window_t window, xcb_atom_t property) {
  constexpr std::size_t longestList = 4096;
  std::vector<xcb_atom_t> pairs =
      atomsIn(takeProperty(connection_, window, property, longestList).value.bytes);
  for (std::size_t i = 0; i + 1 < pairs.size(); i += 2)
    if (pairs[i] == atoms_.multiple || !convert(window, pairs[i], pairs[i + 1])) pairs[i + 1] = XCB_ATOM_NONE;
  put(window, property, atoms_.atomPair, pairs);
  return !pairs.empty();
}

void SelectionOwner::put(xcb_window_t window, xcb_atom_t property, xcb_atom_t type,
                         std::span<const std::uint32_t> values) {
  xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, property, type, 32,
                      static_cast<std::uint32_t>(values.size()), values.data());
}

bool SelectionOwner::put(xcb_window_t window, xcb_atom_t property, const SelectionFormat& format) {
  if (format.bytes.size() > largestPiece) {
    startTransfer(window, property, format);
    return true;
  }
  xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, property, format.type, format.unit,
                      format.length(format.bytes.size()), format.bytes.data());
  handedOut(format);
  return true;
}

void SelectionOwner::startTransfer(xcb_window_t window, xcb_atom_t property, const SelectionFormat& format) {
  std::erase_if(transfers_, [&](const Transfer& t) { return t.window == window && t.property == property; });
  const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
  xcb_change_window_attributes(connection_, window, XCB_CW_EVENT_MASK, &events);
  put(window, property, atoms_.incremental,
      std::array<std::uint32_t, 1>{static_cast<std::uint32_t>(format.bytes.size())});
  const auto transfer = transfers_.insert(transfers_.end(), Transfer{window, property, offered_, &format});
  transfer->patience = glibTimer(context_, transferPatience, [this, transfer] { end(transfer); });
}

// After the last piece comes an empty one, and when that has been deleted as well it is over.
void SelectionOwner::sendNext(Transfers::iterator transfer) {
  if (transfer->isEnded) {
    handedOut(*transfer->format);
    return end(transfer);
  }
  const SelectionFormat& format = *transfer->format;
  const std::size_t size = std::min(largestPiece, format.bytes.size() - transfer->sent);
  xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, transfer->window, transfer->property, format.type,
                      format.unit, format.length(size), format.bytes.data() + transfer->sent);
  xcb_flush(connection_);
  transfer->sent += size;
  transfer->isEnded = size == 0;
  transfer->patience = glibTimer(context_, transferPatience, [this, transfer] { end(transfer); });
}

void SelectionOwner::end(Transfers::iterator transfer) {
  const xcb_window_t window = transfer->window;
  transfers_.erase(transfer);
  constexpr std::uint32_t noEvents = 0;
  if (std::ranges::find(transfers_, window, &Transfer::window) == transfers_.end())
    xcb_change_window_attributes(connection_, window, XCB_CW_EVENT_MASK, &noEvents);
  xcb_flush(connection_);
}

void SelectionOwner::handedOut(const SelectionFormat& format) {
  if (atoms_.isText(format.target)) textWasRead_ = true;
}

}  // namespace nimbletype
