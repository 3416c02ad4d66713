#include "platform/linux/x11_pasteboard.h"

#include <xcb/xfixes.h>

#include <utility>

#include "platform/linux/selection_owner.h"
#include "platform/linux/selection_reader.h"
#include "platform/linux/xcb_source.h"

namespace nimbletype {
namespace {

struct SavedFormats : PasteboardContents {
  explicit SavedFormats(std::shared_ptr<const SelectionFormats> saved) : formats(std::move(saved)) {}
  std::shared_ptr<const SelectionFormats> formats;
};

SavedPasteboard savedAs(std::shared_ptr<const SelectionFormats> formats, std::size_t leftOut) {
  const std::size_t count = formats->size();
  return {std::make_shared<SavedFormats>(std::move(formats)), count, leftOut};
}

std::optional<SavedPasteboard> savedFrom(SelectionReader::Result result) {
  if (!result.answered || (result.formats.empty() && result.leftOut > 0)) return std::nullopt;
  return savedAs(std::make_shared<SelectionFormats>(std::move(result.formats)), result.leftOut);
}

}  // namespace

class X11Pasteboard::Impl {
 public:
  Impl(XcbConnection connection, MainLoop& loop)
      : connection_(std::move(connection)),
        atoms_(SelectionAtoms::intern(connection_.get())),
        loop_(loop),
        owner_(connection_.get(), atoms_, loop) {
    const auto* fixes = xcb_get_extension_data(connection_.get(), &xcb_xfixes_id);
    if (fixes && fixes->present) {
      firstFixesEvent_ = fixes->first_event;
      xcb_discard_reply(connection_.get(), xcb_xfixes_query_version(connection_.get(), 5, 0).sequence);
      xcb_xfixes_select_selection_input(connection_.get(), owner_.window(), atoms_.clipboard,
                                        XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER);
    }
    source_ = std::make_unique<XcbSource>(connection_.get(),
                                          [this](const xcb_generic_event_t& event) { handle(event); });
  }

  SelectionOwner& owner() { return owner_; }
  const SelectionAtoms& atoms() const { return atoms_; }
  bool isLending() const { return lending_; }
  void setLending(bool lending) { lending_ = lending; }

  std::shared_ptr<SelectionReader> read(std::function<void(SelectionReader::Result)> done) {
    return reader_ = std::make_shared<SelectionReader>(connection_.get(), atoms_, loop_, std::move(done));
  }
  void stopReading() { reader_.reset(); }
  bool isReading(const std::shared_ptr<SelectionReader>& reader) const { return reader_ == reader; }

 private:
  void handle(const xcb_generic_event_t& event) {
    if (firstFixesEvent_ != 0 && (event.response_type & 0x7f) == firstFixesEvent_)
      return ownerChanged(reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(event));
    owner_.handle(event);
    if (const auto reader = reader_) reader->handle(event);  // it may end itself
  }

  void ownerChanged(const xcb_xfixes_selection_notify_event_t& event) {
    if (event.owner == owner_.window()) owner_.setClaimedAt(event.selection_timestamp);
    if (const auto reader = reader_) reader->ownerChanged();
  }

  XcbConnection connection_;
  SelectionAtoms atoms_;
  MainLoop& loop_;
  std::uint8_t firstFixesEvent_ = 0;
  SelectionOwner owner_;
  bool lending_ = false;
  std::shared_ptr<SelectionReader> reader_;
  std::unique_ptr<XcbSource> source_;
};

X11Pasteboard::X11Pasteboard(MainLoop& loop, const std::string& display) : loop_(loop) {
  if (auto connection = connectToDisplay(display))
    impl_ = std::make_shared<Impl>(std::move(connection), loop);
}

X11Pasteboard::~X11Pasteboard() = default;

Task X11Pasteboard::save(SaveHandler done) {
  if (!impl_) return loop_.after(Milliseconds(0), [done = std::move(done)] { done(std::nullopt); });
  // What this process put there need not travel.
  if (const auto own = impl_->owner().offered(); own && isOurs())
    return loop_.after(Milliseconds(0), [done = std::move(done), own] { done(savedAs(own, 0)); });
  const auto reader =
      impl_->read([impl = impl_.get(), done = std::move(done)](SelectionReader::Result result) {
        impl->stopReading();
        done(savedFrom(std::move(result)));
      });
  return Task([weak = std::weak_ptr(impl_), reader = std::weak_ptr(reader)] {
    const auto impl = weak.lock();
    const auto started = reader.lock();
    if (impl && started && impl->isReading(started)) impl->stopReading();
  });
}

bool X11Pasteboard::lend(std::string_view text) {
  if (!impl_) return false;
  impl_->setLending(true);
  return impl_->owner().offer(std::make_shared<SelectionFormats>(passingText(impl_->atoms(), text)));
}

Pasteboard::Reading X11Pasteboard::reading() const {
  if (!impl_ || !impl_->isLending() || !impl_->owner().offered()) return Reading::done;
  if (impl_->owner().isHandingOut()) return Reading::underWay;
  return impl_->owner().textWasRead() ? Reading::done : Reading::notYet;
}

bool X11Pasteboard::isOurs() {
  return impl_ && impl_->owner().isOwner();
}

void X11Pasteboard::restore(const SavedPasteboard& saved) {
  if (!impl_) return;
  impl_->setLending(false);
  const auto& formats = dynamic_cast<const SavedFormats&>(*saved.contents).formats;
  // As of the moment the text was lent: whoever copied after that, even if the application gets round to it
  // only now, goes first.
  const xcb_timestamp_t lentAt = impl_->owner().claimedAt();
  if (formats->empty())
    impl_->owner().release(lentAt);
  else
    impl_->owner().offer(formats, lentAt);
}

}  // namespace nimbletype
