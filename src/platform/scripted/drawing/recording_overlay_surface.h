#pragma once
#include <optional>
#include <string>
#include <vector>

#include "platform/drawing/overlay_surface.h"

namespace nimbletype {

// Keeps what it is told to show.
class RecordingOverlaySurface final : public OverlaySurface {
 public:
  void show(const DrawList& list) override;
  void hide() override;

  bool isVisible() const { return shown.has_value(); }
  // The texts on screen, in the order they are painted.
  std::vector<std::string> texts() const;

  std::optional<DrawList> shown;
  int shows = 0, hides = 0;
};

}  // namespace nimbletype
