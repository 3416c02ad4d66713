#pragma once
#include <functional>

namespace nimbletype {

// What windows need of the desktop that Qt does not give them.
struct WindowDesktop {
  // Whether windows may be partly transparent.
  std::function<bool()> mixesWindows = [] { return true; };
  // Makes this application the active one, for a window that the user asked for, and the one that was active
  // before again. Where windows become active one by one there is nothing to do.
  std::function<void()> activate = [] {}, giveBack = [] {};
};

}  // namespace nimbletype
