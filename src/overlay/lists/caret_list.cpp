#include "overlay/lists/caret_list.h"

namespace nimbletype {

void CaretList::anchor(const BottomLeftRect& caret) {
  caret_ = caret;
  dark_ = s_.screens.isDarkAt(caret);
}

void CaretList::draw(const ListContent& content) {
  const std::size_t rows = content.rows.size() + (content.note ? 1 : 0);
  const BottomLeftRect frame = listFrame(caret_, rows, shape_, s_.screens.all());
  s_.surface.show(drawList(frame, shape_, content, listColors(dark_), s_.metrics));
}

std::size_t movedRow(std::size_t row, int by, std::size_t count) {
  const auto size = static_cast<int>(count), to = static_cast<int>(row) + by;
  return static_cast<std::size_t>(((to % size) + size) % size);
}

}  // namespace nimbletype
