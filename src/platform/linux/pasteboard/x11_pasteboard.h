#pragma once
#include <memory>
#include <string>

#include "platform/pasteboard/pasteboard.h"
#include "platform/system/main_loop.h"

namespace nimbletype {

// The port over the CLIPBOARD selection. What is restored is handed out by this process from then on, until
// somebody copies something else or the process ends. Needs a GLib main loop on the default context.
class X11Pasteboard final : public Pasteboard {
 public:
  explicit X11Pasteboard(MainLoop& loop, const std::string& display = {});
  ~X11Pasteboard() override;

  [[nodiscard]] Task save(SaveHandler done) override;
  bool lend(std::string_view text) override;
  Reading reading() const override;
  bool isOurs() override;
  void restore(const SavedPasteboard& saved) override;

 private:
  class Impl;
  MainLoop& loop_;
  std::shared_ptr<Impl> impl_;  // none without a display
};

}  // namespace nimbletype
