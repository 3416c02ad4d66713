#include "overlay/ghost/ghost_panel.h"

#include <algorithm>

#include "overlay/ghost/ghost_draw.h"
#include "overlay/ghost/ghost_font.h"
#include "overlay/ghost/ghost_log.h"
#include "overlay/ghost/ghost_reading.h"

namespace nimbletype {
namespace {

// Wide enough to hold more background than letters.
constexpr double sampleWidth = 16;

BottomLeftRect startOfText(const GhostLayout& layout) {
  const GhostLayout::Line& line = layout.lines.front();
  BottomLeftRect start = line.rect;
  start.width = std::min(start.width, sampleWidth);
  if (line.rightToLeft) start.x = line.rect.right() - start.width;
  return start;
}

}  // namespace

void GhostPanel::present(const GhostContent& content) {
  if (content_ == content) return;
  // A caret without a height is an application's way of not knowing where it is.
  if (content.text.empty() || content.caretRect.height <= 0) return hide();
  const GhostArea area = ghostArea(content, s_.screens.all());
  layout_ = layoutGhost(content, fittedFont(content), area, content.hintLabel, s_.metrics);
  content_ = content;
  if (layout_->container) s_.log.log("overlay", boxLine(content, *layout_, area));
  const GhostColors colors = ghostColors(content.tinted, s_.screens.isDarkAt(startOfText(*layout_)));
  s_.surface.show(drawGhost(*layout_, colors, content.hintLabel, s_.metrics));
}

void GhostPanel::hide() {
  if (!content_) return;
  content_.reset();
  layout_.reset();
  s_.surface.hide();
}

// A line too short to tell is set as the same font was before, and in whole advances where nothing is known.
FontSpec GhostPanel::fittedFont(const GhostContent& content) {
  FontSpec font = fieldFont(content, s_.metrics);
  const auto direction = lineDirection(content, font, s_.metrics);
  const GhostContent inOrder = inReadingOrder(content, direction, font, s_.metrics);
  if (!lastFit_ || lastFit_->font != font) lastFit_ = KnownFit{.font = font};
  if (const auto zoom = zoomOf(inOrder, font, s_.metrics)) lastFit_->zoom = *zoom;
  font.size *= lastFit_->zoom;
  if (const auto fit = usesWholeAdvances(inOrder, font, s_.metrics)) lastFit_->wholeAdvances = *fit;
  font.wholeAdvances = lastFit_->wholeAdvances;
  return font;
}

}  // namespace nimbletype
