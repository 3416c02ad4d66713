#pragma once
#include "platform/clipboard_text.h"

namespace nimbletype {

// The general pasteboard as clipboard histories see it, with the marks they have agreed on.
class MacClipboardText final : public ClipboardText {
 public:
  ClipboardState state() override;
  [[nodiscard]] Task read(Handler done) override;
};

}  // namespace nimbletype
