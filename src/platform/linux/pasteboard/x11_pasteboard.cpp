#include "platform/linux/pasteboard/x11_pasteboard.h"

#include <utility>

#include "platform/linux/pasteboard/selection_reader.h"
#include "platform/linux/pasteboard/selection_server.h"

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
  Impl(XcbConnection connection, std::unique_ptr<SelectionServer> server, MainLoop& loop)
      : connection_(std::move(connection)),
        atoms_(SelectionAtoms::intern(connection_.get())),
        loop_(loop),
        server_(std::move(server)),
        window_(createHiddenWindow(connection_.get(), XCB_EVENT_MASK_NO_EVENT)),
        firstFixesEvent_(followSelection(connection_.get(), window_, atoms_.clipboard)) {
    source_ = std::make_unique<XcbSource>(connection_.get(),
                                          [this](const xcb_generic_event_t& event) { handle(event); });
  }

  template <typename Ask>
  auto askOwner(Ask question) {
    return server_->ask(std::move(question));
  }
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
    const auto reader = reader_;  // it may end itself
    if (!reader) return;
    const bool ownerChanged = firstFixesEvent_ != 0 && (event.response_type & 0x7f) == firstFixesEvent_;
    ownerChanged ? reader->ownerChanged() : reader->handle(event);
  }

  XcbConnection connection_;
  SelectionAtoms atoms_;
  MainLoop& loop_;
  std::unique_ptr<SelectionServer> server_;
  xcb_window_t window_;
  std::uint8_t firstFixesEvent_;
  bool lending_ = false;
  std::shared_ptr<SelectionReader> reader_;
  std::unique_ptr<XcbSource> source_;
};

X11Pasteboard::X11Pasteboard(MainLoop& loop, const std::string& display) : loop_(loop) {
  auto connection = connectToDisplay(display);
  auto server = SelectionServer::start(display);
  if (connection && server) impl_ = std::make_shared<Impl>(std::move(connection), std::move(server), loop);
}

X11Pasteboard::~X11Pasteboard() = default;

Task X11Pasteboard::save(SaveHandler done) {
  if (!impl_) return loop_.after(Milliseconds(0), [done = std::move(done)] { done(std::nullopt); });
  // What this process put there need not travel.
  const auto own =
      impl_->askOwner([](SelectionOwner& owner) { return owner.isOwner() ? owner.offered() : nullptr; });
  if (own) return loop_.after(Milliseconds(0), [done = std::move(done), own] { done(savedAs(own, 0)); });
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
  auto formats = std::make_shared<const SelectionFormats>(passingText(impl_->atoms(), text));
  return impl_->askOwner([&](SelectionOwner& owner) { return owner.offer(std::move(formats)); });
}

Pasteboard::Reading X11Pasteboard::reading() const {
  if (!impl_ || !impl_->isLending()) return Reading::done;
  return impl_->askOwner([](SelectionOwner& owner) {
    if (!owner.offered()) return Reading::done;
    if (owner.isHandingOut()) return Reading::underWay;
    return owner.textWasRead() ? Reading::done : Reading::notYet;
  });
}

bool X11Pasteboard::isOurs() {
  return impl_ && impl_->askOwner([](SelectionOwner& owner) { return owner.isOwner(); });
}

void X11Pasteboard::restore(const SavedPasteboard& saved) {
  if (!impl_) return;
  impl_->setLending(false);
  const auto& formats = dynamic_cast<const SavedFormats&>(*saved.contents).formats;
  // As of the moment the text was lent: whoever copied after that, even if the application gets round to it
  // only now, goes first.
  impl_->askOwner([&](SelectionOwner& owner) {
    return formats->empty() ? owner.release(owner.claimedAt()) : owner.offer(formats, owner.claimedAt());
  });
}

}  // namespace nimbletype
