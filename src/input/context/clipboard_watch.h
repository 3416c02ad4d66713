#pragma once
#include <functional>
#include <optional>
#include <string>

#include "platform/pasteboard/clipboard_text.h"
#include "platform/system/main_loop.h"

namespace nimbletype {

// Keeps the text copied last while it may be used: for ten minutes after the copy, and only when it was not
// marked as a secret, nor copied while an application was in front whose text is to be left alone. What was
// there before the watch began is of unknown age and is never read.
class ClipboardWatch {
 public:
  static constexpr Milliseconds longest{10 * 60 * 1000}, period{1000};

  // Whether the application in front may be read.
  using MayRead = std::function<bool()>;
  ClipboardWatch(ClipboardText& clipboard, MainLoop& loop, MayRead mayReadFrontmost)
      : clipboard_(clipboard), loop_(loop), mayRead_(std::move(mayReadFrontmost)) {}

  // Off, nothing is asked of the clipboard and nothing is kept.
  void setOn(bool on);
  // Another application may be in front now.
  void frontmostChanged();
  // Empty when there is nothing to use.
  std::string text() const;

 private:
  void look();
  void forget();

  ClipboardText& clipboard_;
  MainLoop& loop_;
  MayRead mayRead_;
  bool isOn_ = false;
  bool secretInFront_ = false;  // at any time since the last look
  std::int64_t seen_ = 0;
  MonotonicTime copiedAt_;
  std::optional<std::string> text_;
  Task next_, reading_;
};

}  // namespace nimbletype
