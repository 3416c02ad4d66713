#pragma once
#include <cstdint>
#include <functional>
#include <memory>

#include "platform/drawing/overlay_surface.h"

namespace nimbletype {

// The port over a window that the window manager, the pointer and the keyboard do not see. Where the desktop
// mixes windows it is transparent; where not, it covers just its text, in the colour that stands beside the
// caret.
class QtOverlaySurface final : public OverlaySurface {
 public:
  // What Qt does not know about the desktop.
  struct Desktop {
    // Asked at every show, as a compositor may come and go.
    std::function<bool()> mixesWindows;
    // Told the native window once, before it is first seen.
    std::function<void(std::uint64_t)> mark;
    // Sends what Qt still holds back for the window system.
    std::function<void()> flush;
  };

  explicit QtOverlaySurface(Desktop desktop);
  ~QtOverlaySurface() override;

  void show(const DrawList& list) override;
  void hide() override;

 private:
  class Window;
  std::unique_ptr<Window> window_;
  Desktop desktop_;
};

}  // namespace nimbletype
