#pragma once
#include <deque>
#include <functional>
#include <optional>

#include "platform/linux/pasteboard/selection_data.h"
#include "platform/pasteboard/pasteboard.h"
#include "platform/system/main_loop.h"

namespace nimbletype {

// Reads the clipboard from the application that owns it, one format after the other, within the limits of the
// port.
class SelectionReader {
 public:
  struct Result {
    SelectionFormats formats;  // in the owner's order
    std::size_t leftOut = 0;
    bool answered = true;  // the owner told what it has, or there is none
  };
  SelectionReader(xcb_connection_t* connection, const SelectionAtoms& atoms, MainLoop& loop,
                  std::function<void(Result)> done);
  ~SelectionReader();
  SelectionReader(const SelectionReader&) = delete;
  SelectionReader& operator=(const SelectionReader&) = delete;

  // Events of the connection. The reader may be gone after either of these.
  void handle(const xcb_generic_event_t& event);
  void ownerChanged() { start(); }

 private:
  void start();
  void ask(xcb_atom_t target);
  void answered(bool refused);
  void take(ReadProperty read);
  void takeChunk();
  void takeTargets(const std::string& bytes);
  void keep(SelectionFormat format);
  void next();
  void finish();

  xcb_connection_t* connection_;
  const SelectionAtoms& atoms_;
  std::function<void(Result)> done_;
  xcb_window_t window_ = XCB_WINDOW_NONE;
  std::vector<xcb_atom_t> offered_;
  std::deque<xcb_atom_t> wanted_;
  xcb_atom_t asked_ = XCB_ATOM_NONE;
  std::optional<SelectionFormat> growing_;  // arrives in pieces
  std::size_t room_ = 0;
  Result result_;
  Task limit_, finish_;
  MainLoop& loop_;
};

}  // namespace nimbletype
