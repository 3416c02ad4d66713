#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/accessibility/tree/atspi_object.h"

namespace nimbletype {

// One element of a page's editable part. Its text counts code points and has one U+FFFC for each child.
struct RichTextNode {
  AtspiRef element;
  std::u32string text;
  std::int64_t start = 0;  // what the element counts for the first of these
  bool isBlock = true;     // stands on lines of its own
  std::int64_t caret = -1;
  std::int64_t selectionStart = -1, selectionEnd = -1;  // none below zero
  std::vector<RichTextNode> children;                   // as many as U+FFFC, or none where they are not known
};

// The text of such a part as people see it, each block on lines of its own. A line break that ends a block is
// left out: pages do not show it. Offsets are UTF-16 units.
class AtspiRichText {
 public:
  explicit AtspiRichText(const RichTextNode& root);

  TextRange selection() const { return selection_; }  // empty at the caret
  std::int64_t size() const { return static_cast<std::int64_t>(text_.size()); }
  // UTF-8; clipped to the text.
  std::string text(const TextRange& range) const;

  // Characters of one element, in its own offsets.
  struct Place {
    AtspiRef element;
    std::int64_t start = 0, end = 0;
  };
  // What a range stands for; none where it belongs to no single element. An empty one stands for the
  // character there, be it one that is not shown.
  std::optional<Place> placeOf(const TextRange& range) const;

 private:
  struct Origin {
    AtspiRef element;  // none for what separates blocks
    std::int64_t offset = 0;
  };
  class Composer;

  std::u16string text_;
  std::vector<Origin> origins_;  // of each unit, and of the end
  TextRange selection_;
};

}  // namespace nimbletype
