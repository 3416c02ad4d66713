#include "overlay/ghost_panel.h"

#include "overlay/ghost_draw.h"
#include "overlay/ghost_font.h"
#include "overlay/ghost_log.h"

namespace nimbletype {

void GhostPanel::present(const GhostContent& content) {
  if (content_ == content) return;
  // A caret without a height is an application's way of not knowing where it is.
  if (content.text.empty() || content.caretRect.height <= 0) return hide();
  const GhostArea area = ghostArea(content, ports_.screens.all());
  layout_ = layoutGhost(content, fittedFont(content), area, hintLabel_, ports_.metrics);
  content_ = content;
  if (layout_->container) ports_.log.log("overlay", boxLine(content, *layout_, area));
  const GhostColors colors = ghostColors(content.tinted, ports_.screens.isDarkAt(content.caretRect));
  ports_.surface.show(drawGhost(*layout_, colors, hintLabel_, ports_.metrics));
}

void GhostPanel::hide() {
  if (!content_) return;
  content_.reset();
  layout_.reset();
  ports_.surface.hide();
}

// A line too short to tell is set as the same font was before, and in whole advances where nothing is known.
FontSpec GhostPanel::fittedFont(const GhostContent& content) {
  FontSpec font = ghostFont(content, ports_.metrics);
  if (const auto fit = usesWholeAdvances(content, font, ports_.metrics)) lastFit_ = {font, *fit};
  font.wholeAdvances = lastFit_ && lastFit_->font == font ? lastFit_->wholeAdvances : true;
  return font;
}

}  // namespace nimbletype
