#include "platform/scripted/drawing/recording_overlay_surface.h"

namespace nimbletype {

void RecordingOverlaySurface::show(const DrawList& list) {
  shown = list;
  ++shows;
}

void RecordingOverlaySurface::hide() {
  shown.reset();
  ++hides;
}

std::vector<std::string> RecordingOverlaySurface::texts() const {
  std::vector<std::string> all;
  if (!shown) return all;
  for (const auto& item : shown->items)
    if (const auto* text = std::get_if<TextDraw>(&item)) all.push_back(text->text);
  return all;
}

}  // namespace nimbletype
