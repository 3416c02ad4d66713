#include "input/caret/caret_geometry.h"

#include <cmath>

namespace nimbletype {
namespace {

using Box = std::optional<TopLeftRect>;

// Applications answer with an empty rectangle, or with nonsense, for places they do not know.
Box usable(const Box& box) {
  return box && isFinite(*box) && box->height > 0 && box->width >= 0 ? box : std::nullopt;
}

Box usableEmptyRange(const Box& box) {
  if (!box || (box->x <= 0 && box->y <= 0)) return std::nullopt;
  return usable(box);
}

double middle(const TopLeftRect& box) {
  return box.y + box.height / 2;
}

bool isOnLaterLine(const TopLeftRect& box, const TopLeftRect& previous) {
  return middle(box) > previous.bottom();
}

TopLeftRect caretAt(double x, const TopLeftRect& line) {
  return {x, line.y, 1, line.height};
}

// Some applications put the place after a line break at the end of the line that it ends.
bool isEndOfLineAbove(const TopLeftRect& box, const Box& lineBreak) {
  return lineBreak && !isOnLaterLine(box, *lineBreak) && box.x >= lineBreak->x;
}

Box lineThatStartsAtCaret(const CaretBoxes& boxes) {
  const Box lineBreak = usable(boxes.previousCharacter);
  for (const Box& box : {usable(boxes.nextCharacter), usableEmptyRange(boxes.emptyRange)})
    if (box && !isEndOfLineAbove(*box, lineBreak)) return box;
  return std::nullopt;
}

}  // namespace

bool isFinite(const TopLeftRect& rect) {
  return std::isfinite(rect.x) && std::isfinite(rect.y) && std::isfinite(rect.width) &&
         std::isfinite(rect.height);
}

std::optional<CaretPlace> caretFromCharacters(const CaretBoxes& boxes, bool followsLineBreak) {
  if (followsLineBreak) {
    const Box line = lineThatStartsAtCaret(boxes);
    if (!line) return std::nullopt;
    return CaretPlace{caretAt(line->x, *line), line->x};
  }
  const Box empty = usableEmptyRange(boxes.emptyRange);
  const Box previous = usable(boxes.previousCharacter);
  if (empty && (!previous || !isOnLaterLine(*empty, *previous)))
    return CaretPlace{caretAt(empty->x, *empty), {}};
  if (previous) return CaretPlace{caretAt(previous->right(), *previous), {}};
  if (const Box next = usable(boxes.nextCharacter)) return CaretPlace{caretAt(next->x, *next), {}};
  return std::nullopt;
}

}  // namespace nimbletype
