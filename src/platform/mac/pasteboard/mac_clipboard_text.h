#pragma once
#include <functional>
#include <utility>

#include "platform/pasteboard/clipboard_text.h"

namespace nimbletype {

// The general pasteboard as clipboard histories see it, with the marks they have agreed on.
class MacClipboardText final : public ClipboardText {
 public:
  // `isOurs` says whether this process put there what is there.
  explicit MacClipboardText(std::function<bool()> isOurs) : isOurs_(std::move(isOurs)) {}
  ClipboardState state() override;
  [[nodiscard]] Task read(Handler done) override;

 private:
  std::function<bool()> isOurs_;
};

}  // namespace nimbletype
