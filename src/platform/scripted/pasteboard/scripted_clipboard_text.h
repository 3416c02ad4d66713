#pragma once
#include "platform/pasteboard/clipboard_text.h"
#include "platform/system/main_loop.h"

namespace nimbletype {

// Holds what the test copied, and counts how often that is read.
class ScriptedClipboardText : public ClipboardText {
 public:
  explicit ScriptedClipboardText(MainLoop& loop) : loop_(loop) {}

  void copy(std::string text, bool concealed = false, bool transient = false) {
    text_ = std::move(text);
    state_ = {state_.changeCount + 1, concealed, transient};
  }
  ClipboardState state() override { return state_; }
  Task read(Handler done) override {
    ++timesRead;
    return loop_.after(Milliseconds(0), [this, done = std::move(done)] { done(text_); });
  }

  int timesRead = 0;

 private:
  MainLoop& loop_;
  ClipboardState state_;
  std::optional<std::string> text_;
};

}  // namespace nimbletype
