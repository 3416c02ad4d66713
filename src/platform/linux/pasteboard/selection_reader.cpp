#include "platform/linux/pasteboard/selection_reader.h"

#include <algorithm>
#include <utility>

namespace nimbletype {

SelectionReader::SelectionReader(xcb_connection_t* connection, const SelectionAtoms& atoms, MainLoop& loop,
                                 std::function<void(Result)> done)
    : connection_(connection), atoms_(atoms), done_(std::move(done)), loop_(loop) {
  limit_ = loop_.after(Pasteboard::longestSave, [this] { finish(); });
  start();
}

SelectionReader::~SelectionReader() {
  if (window_ != XCB_WINDOW_NONE) xcb_destroy_window(connection_, window_);
  xcb_flush(connection_);
}

// Each start has a window of its own: what a former owner still sends goes nowhere.
void SelectionReader::start() {
  if (window_ != XCB_WINDOW_NONE) xcb_destroy_window(connection_, window_);
  window_ = createHiddenWindow(connection_, XCB_EVENT_MASK_PROPERTY_CHANGE);
  offered_.clear();
  wanted_.clear();
  growing_.reset();
  room_ = Pasteboard::largestSave;
  result_ = {{}, 0, false};
  ask(atoms_.targets);
}

// The target names the property as well, so that no two answers can be taken for each other.
void SelectionReader::ask(xcb_atom_t target) {
  asked_ = target;
  xcb_convert_selection(connection_, window_, atoms_.clipboard, target, target, XCB_CURRENT_TIME);
  xcb_flush(connection_);
}

void SelectionReader::handle(const xcb_generic_event_t& event) {
  const int type = event.response_type & 0x7f;
  if (type == XCB_SELECTION_NOTIFY) {
    const auto& notify = reinterpret_cast<const xcb_selection_notify_event_t&>(event);
    if (notify.requestor == window_ && notify.target == asked_ && !growing_)
      answered(notify.property == XCB_ATOM_NONE);
  } else if (type == XCB_PROPERTY_NOTIFY && growing_) {
    const auto& notify = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    if (notify.window == window_ && notify.atom == asked_ && notify.state == XCB_PROPERTY_NEW_VALUE)
      takeChunk();
  }
}

void SelectionReader::answered(bool refused) {
  if (!refused) return take(takeProperty(connection_, window_, asked_, room_));
  if (asked_ != atoms_.targets) return next();
  // Nobody owns the clipboard, or somebody old-fashioned does.
  result_.answered = true;
  offered_ = {atoms_.utf8Text, XCB_ATOM_STRING};
  wanted_.assign(offered_.begin(), offered_.end());
  next();
}

void SelectionReader::take(ReadProperty read) {
  if (!read.complete) {
    ++result_.leftOut;
    return next();
  }
  if (asked_ == atoms_.targets) return takeTargets(read.value.bytes);
  if (read.value.type == atoms_.incremental) {
    growing_ = SelectionFormat{asked_};
    return;
  }
  if (read.value.type != XCB_ATOM_NONE) keep(std::move(read.value));
  next();
}

// An empty piece ends it.
void SelectionReader::takeChunk() {
  ReadProperty piece = takeProperty(connection_, window_, asked_, room_ - growing_->bytes.size());
  if (!piece.complete) {
    ++result_.leftOut;
    growing_.reset();
    return next();
  }
  growing_->type = piece.value.type;
  growing_->unit = piece.value.unit;
  if (!piece.value.bytes.empty()) {
    growing_->bytes += piece.value.bytes;
    return;
  }
  keep(*std::exchange(growing_, std::nullopt));
  next();
}

// Text goes first, then the picture format every application can read: should time or room run out, the
// others are most likely made from these.
void SelectionReader::takeTargets(const std::string& bytes) {
  result_.answered = true;
  for (xcb_atom_t target : atomsIn(bytes))
    if (!atoms_.isRequest(target) && std::ranges::find(offered_, target) == offered_.end())
      offered_.push_back(target);
  const xcb_atom_t png = atomNamed(connection_, "image/png");
  const auto rank = [&](xcb_atom_t target) { return atoms_.isText(target) ? 0 : target == png ? 1 : 2; };
  wanted_.assign(offered_.begin(), offered_.end());
  std::ranges::stable_sort(wanted_, {}, rank);
  next();
}

void SelectionReader::keep(SelectionFormat format) {
  room_ -= format.bytes.size();
  result_.formats.push_back(std::move(format));
}

void SelectionReader::next() {
  asked_ = XCB_ATOM_NONE;
  if (wanted_.empty()) return finish();
  const xcb_atom_t target = wanted_.front();
  wanted_.pop_front();
  ask(target);
}

void SelectionReader::finish() {
  const bool isAsking = asked_ != XCB_ATOM_NONE && asked_ != atoms_.targets;
  result_.leftOut += wanted_.size() + (isAsking ? 1 : 0);
  std::ranges::sort(result_.formats, {}, [this](const SelectionFormat& format) {
    return std::ranges::find(offered_, format.target) - offered_.begin();
  });
  limit_.cancel();
  const auto done = std::move(done_);
  done(std::move(result_));
}

}  // namespace nimbletype
