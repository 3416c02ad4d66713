#pragma once
#include <optional>
#include <string>

#include "overlay/ghost/ghost_layout.h"
#include "platform/desktop/screens.h"
#include "platform/system/system_log.h"

namespace nimbletype {

// The window that shows a suggestion after the caret. Made once, hidden while there is nothing to suggest.
class GhostPanel final : public GhostPresenter {
 public:
  struct Services {
    OverlaySurface& surface;
    const Screens& screens;
    const FontMetrics& metrics;
    SystemLog& log;
  };

  explicit GhostPanel(const Services& services) : s_(services) {}

  void present(const GhostContent& content) override;
  void hide() override;

  // What is on screen; none while hidden.
  const std::optional<GhostContent>& content() const { return content_; }
  const std::optional<GhostLayout>& layout() const { return layout_; }

 private:
  // How the application sets a font.
  struct KnownFit {
    FontSpec font;
    bool wholeAdvances = true;
    double zoom = 1;
  };

  FontSpec fittedFont(const GhostContent& content);

  Services s_;
  std::optional<GhostContent> content_;
  std::optional<GhostLayout> layout_;
  std::optional<KnownFit> lastFit_;
};

}  // namespace nimbletype
