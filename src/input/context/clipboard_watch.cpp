#include "input/context/clipboard_watch.h"

#include <utility>

namespace nimbletype {

void ClipboardWatch::setOn(bool on) {
  if (on == isOn_) return;
  isOn_ = on;
  forget();
  next_ = Task();
  if (!on) return;
  seen_ = clipboard_.state().changeCount;
  secretInFront_ = !mayRead_();
  next_ = loop_.after(period, [this] { look(); });
}

void ClipboardWatch::forget() {
  reading_ = Task();
  text_.reset();
}

// A copy made just before is that of the application that was in front until now.
void ClipboardWatch::frontmostChanged() {
  if (isOn_) look();
}

void ClipboardWatch::look() {
  next_ = loop_.after(period, [this] { look(); });
  const bool secretNow = !mayRead_();
  const bool secretLately = std::exchange(secretInFront_, secretNow) || secretNow;
  const ClipboardState state = clipboard_.state();
  if (text_ && loop_.now() - copiedAt_ >= longest) forget();
  if (state.changeCount == seen_) return;
  seen_ = state.changeCount;
  forget();
  copiedAt_ = loop_.now();
  if (state.isConcealed || state.isTransient || secretLately) return;
  // Another copy may have come in between.
  reading_ = clipboard_.read([this, count = seen_](std::optional<std::string> text) {
    if (clipboard_.state().changeCount == count) text_ = std::move(text);
  });
}

std::string ClipboardWatch::text() const {
  const bool isRecent = loop_.now() - copiedAt_ < longest;
  return text_ && isRecent ? *text_ : std::string();
}

}  // namespace nimbletype
