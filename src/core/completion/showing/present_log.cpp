#include "core/completion/showing/present_log.h"

#include <algorithm>
#include <cmath>

namespace nimbletype {
namespace {

std::string whole(double value) {
  return std::to_string(std::lround(value));
}

std::string described(const std::optional<BottomLeftRect>& frame) {
  if (!frame) return "none";
  return whole(frame->x) + "," + whole(frame->y) + " " + whole(frame->width) + "x" + whole(frame->height);
}

}  // namespace

std::string presentLogLine(const GhostContent& content, std::string_view before) {
  const auto lines = std::count(before.begin(), before.end(), '\n') + (before.empty() ? 0 : 1);
  return "present: caret " + whole(content.caretRect.x) + "," + whole(content.caretRect.y) + " h" +
         whole(content.caretRect.height) + ", field " + described(content.fieldFrame) + ", line start " +
         (content.lineStartX ? whole(*content.lineStartX) : "none") + ", font " + whole(content.fontSize) +
         ", wrap " + (content.allowWrap ? "true" : "false") + ", lines before " + std::to_string(lines);
}

}  // namespace nimbletype
