#include "input/insertion/paster.h"

#include <utility>

#include "text/text.h"

namespace nimbletype {
namespace {

constexpr Milliseconds restoreDelay{300};
// An application may hang for a while before it comes to its paste; one that never reads has no use for it.
constexpr Milliseconds patience{2000};
constexpr Milliseconds lookAgainAfter{20};
// Where nobody tells who has read, another text leaves the application this long to do so.
constexpr Milliseconds unseenReading{60};

}  // namespace

void Paster::paste(std::string_view text, InsertionTarget target) {
  if (text.empty()) return;
  if (!waiting_) waiting_.emplace();
  waiting_->text += text;
  waiting_->target = std::move(target);
  if (!isSaving_ && !isUnread()) begin();
}

void Paster::begin() {
  if (original_ && s_.pasteboard.isOurs()) return pasteWaiting();
  // What the user copied in between is what is to be put back from now on.
  original_.reset();
  pastedAt_.reset();
  look_.cancel();
  isSaving_ = true;
  saving_ = s_.pasteboard.save([this](auto original) { saved(std::move(original)); });
}

void Paster::saved(std::optional<SavedPasteboard> original) {
  isSaving_ = false;
  if (!original) {
    s_.log.log("input", "paste: the pasteboard cannot be saved, another way is taken");
    const Order order = *std::exchange(waiting_, std::nullopt);
    if (order.target.isStillThere()) otherwise_(order.text, order.target);
    return;
  }
  if (original->leftOut > 0)
    s_.log.log("input", "paste: " + std::to_string(original->leftOut) +
                            " formats of the pasteboard are too slow or too large to be kept");
  original_ = std::move(original);
  pasteWaiting();
}

void Paster::pasteWaiting() {
  const Order order = *std::exchange(waiting_, std::nullopt);
  if (press(order)) pastedAt_ = s_.loop.now();
  if (pastedAt_)
    look_ = s_.loop.after(lookAgainAfter, [this] { look(); });
  else
    original_.reset();
}

bool Paster::press(const Order& order) {
  if (!order.target.isStillThere()) return false;
  if (!s_.poster.begin()) {
    s_.log.log("input", "type: no event source");
    return false;
  }
  const bool lent = s_.pasteboard.lend(order.text);
  if (lent) {
    constexpr std::uint8_t command = ModifierSet::command, withShift = command | ModifierSet::shift;
    s_.poster.press(key::v, {order.target.inTerminal ? withShift : command});
  }
  s_.poster.end();
  if (lent) {
    s_.log.log("input", "paste: " + std::to_string(text::utf16Length(order.text)) + " units");
    return true;
  }
  s_.log.log("input", "paste: the pasteboard cannot be had");
  if (s_.pasteboard.isOurs()) s_.pasteboard.restore(*original_);
  return false;
}

bool Paster::isUnread() const {
  using Reading = Pasteboard::Reading;
  if (!pastedAt_) return false;
  const auto age = s_.loop.now() - *pastedAt_;
  const Reading reading = s_.pasteboard.reading();
  if (reading == Reading::unknown) return age < unseenReading;
  return reading != Reading::done && age < patience;
}

void Paster::look() {
  if (!isUnread()) {
    if (waiting_) return begin();
    if (s_.loop.now() - *pastedAt_ >= restoreDelay) return putBack();
  }
  look_ = s_.loop.after(lookAgainAfter, [this] { look(); });
}

void Paster::putBack() {
  if (s_.pasteboard.isOurs())
    s_.pasteboard.restore(*original_);
  else
    s_.log.log("input", "paste: something else was copied meanwhile, it stays");
  original_.reset();
  pastedAt_.reset();
}

}  // namespace nimbletype
