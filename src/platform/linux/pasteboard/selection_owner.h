#pragma once
#include <list>
#include <memory>

#include "platform/linux/bus/glib_thread.h"
#include "platform/linux/pasteboard/selection_data.h"

namespace nimbletype {

// Owns the clipboard and hands its formats out to whoever asks: large ones in pieces, as many askers at a
// time as there are. Lives on the thread of its context.
class SelectionOwner {
 public:
  SelectionOwner(xcb_connection_t* connection, const SelectionAtoms& atoms, GMainContext* context);

  // Takes the clipboard; false when somebody else has it since `time`.
  bool offer(std::shared_ptr<const SelectionFormats> formats, xcb_timestamp_t time = XCB_CURRENT_TIME);
  // Leaves it empty; false when somebody else has it since `time`.
  bool release(xcb_timestamp_t time);
  bool isOwner() const { return currentOwner() == window_; }
  // What is offered; none once somebody else owns the clipboard.
  const std::shared_ptr<const SelectionFormats>& offered() const { return offered_; }

  // Whether any text of what is offered has been handed out whole, and whether some is on its way.
  bool textWasRead() const { return textWasRead_; }
  bool isHandingOut() const { return !transfers_.empty(); }

  xcb_window_t window() const { return window_; }
  // When it was taken last; the server tells.
  xcb_timestamp_t claimedAt() const { return claimedAt_; }
  void setClaimedAt(xcb_timestamp_t time) { claimedAt_ = time; }
  void handle(const xcb_generic_event_t& event);

 private:
  // One format on its way to one window, piece by piece: the window deletes each before it gets the next.
  struct Transfer {
    xcb_window_t window;
    xcb_atom_t property;
    std::shared_ptr<const SelectionFormats> formats;  // keeps the next alive
    const SelectionFormat* format;
    std::size_t sent = 0;
    bool isEnded = false;
    Task patience{};
  };
  using Transfers = std::list<Transfer>;

  xcb_window_t currentOwner() const;
  void answer(const xcb_selection_request_event_t& request);
  bool convert(xcb_window_t window, xcb_atom_t target, xcb_atom_t property);
  bool convertSeveral(xcb_window_t window, xcb_atom_t property);
  void put(xcb_window_t window, xcb_atom_t property, xcb_atom_t type, std::span<const std::uint32_t> values);
  bool put(xcb_window_t window, xcb_atom_t property, const SelectionFormat& format);
  void startTransfer(xcb_window_t window, xcb_atom_t property, const SelectionFormat& format);
  void sendNext(Transfers::iterator transfer);
  void end(Transfers::iterator transfer);
  void handedOut(const SelectionFormat& format);

  xcb_connection_t* connection_;
  const SelectionAtoms& atoms_;
  GMainContext* context_;
  xcb_window_t window_;
  xcb_timestamp_t claimedAt_ = XCB_CURRENT_TIME;
  std::shared_ptr<const SelectionFormats> offered_;
  bool textWasRead_ = false;
  Transfers transfers_;
};

}  // namespace nimbletype
