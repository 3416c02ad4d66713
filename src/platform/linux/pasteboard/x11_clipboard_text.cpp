#include "platform/linux/pasteboard/x11_clipboard_text.h"

#include <algorithm>
#include <utility>

#include "platform/linux/pasteboard/selection_data.h"
#include "platform/linux/x11/xcb_source.h"
#include "text/text.h"

namespace nimbletype {
namespace {

constexpr std::size_t mostBytes = 256UZ * 1024;  // longer texts are of no use and travel in pieces

}  // namespace

class X11ClipboardText::Impl {
 public:
  explicit Impl(XcbConnection connection)
      : connection_(std::move(connection)),
        atoms_(SelectionAtoms::intern(connection_.get())),
        window_(createHiddenWindow(connection_.get(), XCB_EVENT_MASK_NO_EVENT)) {
    firstFixesEvent_ = followSelection(connection_.get(), window_, atoms_.clipboard);
    if (firstFixesEvent_ == 0) return;
    source_ = std::make_unique<XcbSource>(connection_.get(),
                                          [this](const xcb_generic_event_t& event) { handle(event); });
    xcb_flush(connection_.get());
  }

  const ClipboardState& state() const { return state_; }

  std::uint64_t read(Handler done) {
    done_ = std::move(done);
    ask(atoms_.utf8Text);
    return ++readings_;
  }
  // A task may be replaced by that of the next reading, and end after that has begun.
  void stop(std::uint64_t reading) {
    if (reading == readings_) done_ = nullptr;
  }

 private:
  // Each target has a property of its own name, so that answers cannot be mistaken for one another.
  void ask(xcb_atom_t target) {
    xcb_convert_selection(connection_.get(), window_, atoms_.clipboard, target, target, XCB_CURRENT_TIME);
    xcb_flush(connection_.get());
  }

  void handle(const xcb_generic_event_t& event) {
    const auto type = event.response_type & 0x7f;
    if (type == firstFixesEvent_) return ask(atoms_.targets);
    if (type != XCB_SELECTION_NOTIFY) return;
    const auto& notify = reinterpret_cast<const xcb_selection_notify_event_t&>(event);
    const auto answer = notify.property == XCB_ATOM_NONE
                            ? ReadProperty{}
                            : takeProperty(connection_.get(), window_, notify.property, mostBytes);
    if (notify.target == atoms_.targets) tookTargets(answer);
    if (notify.target == atoms_.utf8Text) tookText(answer);
  }

  // The desktops' password managers mark what they copy.
  void tookTargets(const ReadProperty& answer) {
    const auto targets = atomsIn(answer.value.bytes);
    state_.isConcealed = std::ranges::find(targets, atoms_.passwordHint) != targets.end();
    ++state_.changeCount;
  }

  void tookText(const ReadProperty& answer) {
    const bool isText = answer.complete && answer.value.type == atoms_.utf8Text;
    if (const auto done = std::exchange(done_, nullptr))
      done(isText ? std::optional(text::repaired(answer.value.bytes)) : std::nullopt);
  }

  XcbConnection connection_;
  SelectionAtoms atoms_;
  xcb_window_t window_;
  std::uint8_t firstFixesEvent_ = 0;
  ClipboardState state_;
  Handler done_;
  std::uint64_t readings_ = 0;
  std::unique_ptr<XcbSource> source_;
};

X11ClipboardText::X11ClipboardText(std::function<bool()> isOurs) : isOurs_(std::move(isOurs)) {
  if (auto connection = connectToDisplay("")) impl_ = std::make_shared<Impl>(std::move(connection));
}

X11ClipboardText::~X11ClipboardText() = default;

ClipboardState X11ClipboardText::state() {
  if (!impl_) return {};
  ClipboardState state = impl_->state();
  state.isTransient = isOurs_();
  return state;
}

Task X11ClipboardText::read(Handler done) {
  if (!impl_) return {};
  return Task([weak = std::weak_ptr(impl_), reading = impl_->read(std::move(done))] {
    if (const auto impl = weak.lock()) impl->stop(reading);
  });
}

}  // namespace nimbletype
