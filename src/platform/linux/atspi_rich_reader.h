#pragma once
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/atspi_bus.h"
#include "platform/linux/atspi_rich_text.h"

namespace nimbletype {

// Reads the editable parts of pages, whose paragraphs are elements of their own. What has been read of a
// paragraph is kept until that one tells of a change; the one with the caret is read anew each time.
class AtspiRichReader {
 public:
  explicit AtspiRichReader(AtspiBus& bus) : bus_(bus) {}

  // None where the element's text is all its own.
  std::optional<AtspiRichText> read(const AtspiRef& element, Deadline deadline);

  // The element's text may have changed.
  void forget(const AtspiRef& element);
  // Whether that text is put together from the texts of others.
  bool isRich(const AtspiRef& text) const { return isRich_ && sameObject(element_, text); }
  // Whether a caret that moves in this element may be that of such a text: paragraphs come and go.
  bool isWithin(const AtspiRef& element, const AtspiRef& text) const {
    return isRich(text) && element->bus() == text->bus();
  }
  // Whether the text has been read of this element since it last told of a change.
  bool hasRead(const AtspiRef& element) const { return known_.contains(element->path()); }

 private:
  struct Known {
    std::u32string text;
    bool isBlock = true;
    std::optional<std::vector<AtspiRef>> children;  // those that a U+FFFC stands for
  };
  using Level = std::vector<RichTextNode*>;

  bool lookAt(const AtspiRef& element, Deadline deadline);
  void ask(const Level& level, Deadline deadline);
  void askChildren(const Level& level, Deadline deadline);
  Level descend(const Level& level);
  void addChildren(RichTextNode& node, const std::vector<AtspiRef>& children);

  AtspiBus& bus_;
  AtspiRef element_;  // the one looked at last
  bool isRich_ = false;
  std::map<std::string, Known> known_;  // by path, for that element and those inside it
};

}  // namespace nimbletype
