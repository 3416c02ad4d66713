#pragma once
#include <functional>
#include <optional>
#include <span>
#include <vector>

#include "platform/linux/accessibility/atspi_content_shift.h"
#include "platform/linux/accessibility/atspi_scale.h"
#include "platform/linux/accessibility/text/atspi_flat_lines.h"
#include "platform/linux/accessibility/text/atspi_rich_reader.h"
#include "platform/linux/accessibility/text/atspi_text.h"
#include "platform/linux/accessibility/tree/atspi_focus.h"

namespace nimbletype {

// Turns attribute reads into calls on the accessibility bus and their answers into values. Reads that need to
// know where the caret stands are asked in a second round.
class AtspiReader {
 public:
  AtspiReader(AtspiBus& bus, AtspiFocus& focus, double fontDotsPerInch)
      : bus_(bus),
        focus_(focus),
        shift_(bus, focus),
        scale_(bus, focus),
        richReader_(bus),
        fontDotsPerInch_(fontDotsPerInch) {}

  std::vector<AttributeValue> read(const AtspiRef& element, std::span<const AttributeRead> reads,
                                   Deadline deadline);
  // The element's text or caret may have changed.
  void forget(const AtspiRef& element);
  // Whether the latest read found any of the boxes it asked a page for; none when it asked for none.
  std::optional<bool> foundBoxes() const { return foundBoxes_; }
  const AtspiRichReader& richReader() const { return richReader_; }

 private:
  using Values = std::vector<AttributeValue>;
  // What a read asked for, to be decoded once its batch is answered.
  using Decode = std::function<AttributeValue(const DBusBatch&)>;
  void readPlain(const AtspiRef& element, std::span<const AttributeRead> reads, Deadline deadline,
                 Values& values);
  void readInText(const AtspiRef& element, std::span<const AttributeRead> reads, Deadline deadline,
                  Values& values);
  void readInRichText(std::span<const AttributeRead> reads, Deadline deadline, Values& values) const;
  void noteBoxes(std::span<const AttributeRead> reads, const Values& values);
  void toPixels(const AtspiRef& element, Deadline deadline, Values& values);
  Decode askInText(DBusBatch& batch, const AttributeRead& read) const;
  Decode askInRichText(DBusBatch& batch, const AttributeRead& read) const;
  AttributeValue readList(const AtspiRef& element, const AttributeRead& read, Deadline deadline) const;
  AttributeValue readFocus(const AtspiRef& application, const AttributeRead& read, Deadline deadline);
  bool needsPosition(const AtspiRef& element, std::span<const AttributeRead> reads) const;

  AtspiBus& bus_;
  AtspiFocus& focus_;
  AtspiContentShift shift_;
  AtspiScale scale_;
  AtspiRichReader richReader_;
  double fontDotsPerInch_;
  AtspiTextPosition position_;         // of the element read last, until something happens to it
  std::optional<AtspiRichText> rich_;  // what that text is put together from
  AtspiToolkit toolkit_;               // of that element's application
  AtspiFlatLines flatLines_;
  std::optional<bool> foundBoxes_;
};

}  // namespace nimbletype
