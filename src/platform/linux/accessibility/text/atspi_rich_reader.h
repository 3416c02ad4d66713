#pragma once
#include <map>
#include <optional>
#include <vector>

#include "platform/linux/accessibility/text/atspi_rich_text.h"
#include "platform/linux/accessibility/text/atspi_text.h"
#include "platform/linux/accessibility/tree/atspi_bus.h"

namespace nimbletype {

// Reads the editable parts of pages, whose paragraphs are elements of their own. What has been read of a
// paragraph is kept until that one tells of a change; the one with the caret is read anew each time.
class AtspiRichReader {
 public:
  explicit AtspiRichReader(AtspiBus& bus) : bus_(bus) {}

  // Whether the text of this editable element is put together from the texts of others.
  bool looksRich(const AtspiRef& element, Deadline deadline);
  // The text of such an element, from what it tells of its caret; none when it does not answer.
  std::optional<AtspiRichText> read(const AtspiTextPosition& at, Deadline deadline);

  // The element's text may have changed.
  void forget(const AtspiRef& element);
  // Whether it has turned out to look so.
  bool isRich(const AtspiRef& text) const;
  // Whether a caret that moves in this element may be that of such a text: paragraphs come and go.
  bool isWithin(const AtspiRef& element, const AtspiRef& text) const {
    return element->bus() == text->bus() && isRich(text);
  }
  // Whether the text has been read of this element since it last told of a change.
  bool hasRead(const AtspiRef& element) const { return known_.contains(*element); }

 private:
  struct Known {
    std::u32string text;
    bool isBlock = true;
    std::optional<std::vector<AtspiRef>> children;  // those that a U+FFFC stands for
  };
  using Level = std::vector<RichTextNode*>;

  void ask(const Level& level, bool asksSelections, Deadline deadline);
  void askChildren(const Level& level, Deadline deadline);
  std::vector<AtspiRef> withoutStaticText(const std::vector<AtspiRef>& children, Deadline deadline) const;
  Level descend(const Level& level);
  void addChildren(RichTextNode& node, const std::vector<AtspiRef>& children);

  struct ByName {
    bool operator()(const AtspiObject& a, const AtspiObject& b) const;
  };
  AtspiBus& bus_;
  std::map<AtspiObject, bool, ByName> isRich_;  // of what has been looked at
  std::map<AtspiObject, Known, ByName> known_;
};

}  // namespace nimbletype
