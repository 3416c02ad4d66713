#include "core/completion/showing/ghost_advance.h"

#include <algorithm>
#include <cmath>

#include "overlay/ghost/ghost_font.h"
#include "overlay/ghost/ghost_reading.h"

namespace nimbletype {
namespace {

constexpr double rounding = 1;  // points by which a report may be off
constexpr double standstill = 0.5;
constexpr double fieldPadding = 6;
constexpr double leastToLearnFrom = 40;
constexpr double narrowestScale = 0.5, widestScale = 2;

bool isOnSameLine(const GhostContent& a, const GhostContent& b) {
  return a.caretRect.y == b.caretRect.y && a.caretRect.height == b.caretRect.height &&
         a.fieldFrame == b.fieldFrame;
}

// A letter that does not fit its line any more goes to the next one.
bool endsInField(const GhostContent& content, double x) {
  if (!content.fieldFrame) return true;
  return x >= content.fieldFrame->x && x <= content.fieldFrame->right() - fieldPadding;
}

}  // namespace

std::optional<std::string_view> typedSince(const GhostContent& drawn, const GhostContent& now) {
  if (drawn.kind != now.kind) return std::nullopt;
  if (drawn.lineText == now.lineText) return "";  // the same place, whatever is to be drawn there
  if (!drawn.text.ends_with(now.text)) return std::nullopt;
  return std::string_view(drawn.text).substr(0, drawn.text.size() - now.text.size());
}

std::optional<double> caretAdvance(const GhostContent& drawn, std::string_view typed,
                                   const FontMetrics& metrics) {
  const FontSpec font = fieldFont(drawn, metrics);
  const text::Direction direction = lineDirection(drawn, font, metrics);
  if (!text::counterflow(drawn.lineText, direction).empty() || !text::counterflow(typed, direction).empty())
    return std::nullopt;
  const double width = metrics.width(font, typed);
  return direction == text::Direction::leftToRight ? width : -width;
}

GhostContent GhostAdvance::follow(const GhostContent& reported) {
  const double reportedX = reported.caretRect.x;
  const auto typed = last_ ? typedSince(last_->drawn, reported) : std::nullopt;
  Last now{reported, reportedX, false, reportedX, 0};
  if (typed && isOnSameLine(last_->drawn, reported))
    if (const auto advance = caretAdvance(last_->drawn, *typed, metrics_)) now = advanced(now, *advance);
  last_ = std::move(now);
  return last_->drawn;
}

// Standing still means where it was reported before, or where the letters typed before have ended.
GhostAdvance::Last GhostAdvance::advanced(Last now, double advance) {
  now.startX = last_->startX;
  now.measured = last_->measured + advance;
  const double before = last_->drawn.caretRect.x, expected = before + advance * scale();
  const auto isAt = [&](double x) { return std::abs(now.reportedX - x) < standstill; };
  const bool hasToMove = std::abs(advance) > rounding;
  now.lagging = hasToMove ? isAt(last_->reportedX) || isAt(before) : last_->lagging && isAt(last_->reportedX);
  const bool isRounded = std::abs(now.reportedX - expected) <= rounding;
  if ((now.lagging || isRounded) && endsInField(now.drawn, expected)) now.drawn.caretRect.x = expected;
  return now;
}

const GhostContent& GhostAdvance::believed() {
  last_->drawn.caretRect.x = last_->reportedX;
  last_->lagging = false;
  return last_->drawn;
}

// Known once enough has been typed for the rounding of the caret's place not to count.
double GhostAdvance::scale() const {
  if (std::abs(last_->measured) < leastToLearnFrom || last_->lagging) return 1;
  return std::clamp((last_->reportedX - last_->startX) / last_->measured, narrowestScale, widestScale);
}

}  // namespace nimbletype
