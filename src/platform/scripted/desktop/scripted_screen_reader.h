#pragma once
#include "platform/desktop/screen_reader.h"
#include "platform/system/main_loop.h"

namespace nimbletype {

// Sees in every window what the test says.
class ScriptedScreenReader : public ScreenReader {
 public:
  explicit ScriptedScreenReader(MainLoop& loop) : loop_(loop) {}
  bool isPermitted() override { return permitted; }
  Task read(const ScreenWindow& window, Handler done) override {
    seen.push_back(window.id);
    return loop_.after(delay, [this, done = std::move(done)] { done(lines); });
  }

  bool permitted = false;
  Milliseconds delay{200};
  std::vector<PlacedText> lines;
  std::vector<std::uint64_t> seen;

 private:
  MainLoop& loop_;
};

}  // namespace nimbletype
