#pragma once
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>

#include "platform/linux/accessibility/text/atspi_offsets.h"
#include "platform/linux/accessibility/tree/atspi_search.h"

namespace nimbletype {

// Where caret and selection of a text are, in the application's own offsets, and what translates those.
struct AtspiTextPosition {
  AtspiRef element;
  std::int64_t start = 0, end = 0;  // of the selection; equal when only the caret stands there
  std::int64_t count = 0;
  bool hasCaret = false;
  bool isSecure = false;
  std::uint32_t role = 0;
  AtspiStates states;
  OffsetUnit unit = OffsetUnit::utf16;
  AtspiOffsets offsets;

  TextRange selection() const;
  // A UTF-16 range in the application's offsets, clipped to the text.
  TextRange own(const TextRange& range) const;
};

// The reading of one element's position: calls are added to a batch, and its answers read after it has been
// waited for. No text of a password field is ever asked for.
class AtspiPositionReading {
 public:
  // Pages take long to tell where a selection is: `asksSelection` says whether to ask before it is known that
  // there is one.
  AtspiPositionReading(DBusBatch& batch, AtspiRef element, bool asksSelection = true);
  // After the batch: whether it is a text to be typed into, and no secret one.
  bool isEditable() const;
  // Where the toolkit counts code points this reads text as well, in one more round trip: that around the
  // caret, all of it, or none.
  enum class Extent { aroundCaret, all, none };
  AtspiTextPosition finish(AtspiBus& bus, Deadline deadline, Extent extent = Extent::aroundCaret) const;

 private:
  std::pair<std::int64_t, std::int64_t> selection(AtspiBus& bus, Deadline deadline) const;

  DBusBatch& batch_;
  AtspiRef element_;
  DBusBatch::Id role_, states_, caret_, count_, selections_;
  std::optional<DBusBatch::Id> selection_;
};

// Font attributes as AT-SPI tells them.
TextFont fontOf(GVariant* attributeRun, double dotsPerInch);

}  // namespace nimbletype
