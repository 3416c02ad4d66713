#pragma once
#import <AppKit/AppKit.h>

#include "platform/pasteboard/pasteboard.h"
#include "platform/system/main_loop.h"

namespace nimbletype {

// The port over the general pasteboard. Nobody there tells who has read.
class MacPasteboard final : public Pasteboard {
 public:
  explicit MacPasteboard(MainLoop& loop) : loop_(loop) {}

  [[nodiscard]] Task save(SaveHandler done) override;
  bool lend(std::string_view text) override;
  Reading reading() const override { return Reading::unknown; }
  bool isOurs() override;
  void restore(const SavedPasteboard& saved) override;

 private:
  std::optional<SavedPasteboard> read();

  MainLoop& loop_;
  NSInteger ownChange_ = -1;  // the pasteboard's count after our last change
};

}  // namespace nimbletype
