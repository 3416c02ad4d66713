#pragma once
#include <functional>
#include <memory>

#include "platform/pasteboard/clipboard_text.h"

namespace nimbletype {

// The port over the CLIPBOARD selection. A copy counts once its owner has told what marks it bears. Needs a
// GLib main loop on the default context.
class X11ClipboardText final : public ClipboardText {
 public:
  // `isOurs` says whether this process put there what is there.
  explicit X11ClipboardText(std::function<bool()> isOurs);
  ~X11ClipboardText() override;

  ClipboardState state() override;
  [[nodiscard]] Task read(Handler done) override;

 private:
  class Impl;
  std::function<bool()> isOurs_;
  std::shared_ptr<Impl> impl_;  // tasks hold it weakly; none without a display
};

}  // namespace nimbletype
