#pragma once
#include "overlay/lists/list_draw.h"

namespace nimbletype {

// A list on its surface beside the caret, in the look that suits what is drawn there.
class CaretList {
 public:
  struct Services {
    OverlaySurface& surface;
    const Screens& screens;
    const FontMetrics& metrics;
  };

  CaretList(const Services& services, const ListShape& shape) : s_(services), shape_(shape) {}

  // Where it opens next, in screen points with the origin at the bottom left. Looks at the background, so it
  // comes before the list covers that.
  void anchor(const BottomLeftRect& caret);
  const BottomLeftRect& caret() const { return caret_; }
  void draw(const ListContent& content);
  void hide() { s_.surface.hide(); }

 private:
  Services s_;
  ListShape shape_;
  BottomLeftRect caret_;
  bool dark_ = false;
};

// The row so many rows further on, from the last to the first and back; `count` is above 0.
std::size_t movedRow(std::size_t row, int by, std::size_t count);

}  // namespace nimbletype
