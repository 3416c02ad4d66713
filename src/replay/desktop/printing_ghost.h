#pragma once
#include <optional>

#include "overlay/ghost/ghost_content.h"
#include "replay/desktop/replay_output.h"

namespace nimbletype {

// Prints the ghost each time something about it changes that can be read off the screen.
class PrintingGhost : public GhostPresenter {
 public:
  explicit PrintingGhost(ReplayOutput& output) : output_(output) {}
  void present(const GhostContent& content) override;
  void hide() override;

 private:
  ReplayOutput& output_;
  std::optional<Json> shown_;
};

}  // namespace nimbletype
