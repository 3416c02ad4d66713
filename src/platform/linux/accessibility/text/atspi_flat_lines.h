#pragma once
#include <cstdint>
#include <limits>
#include <optional>

#include "platform/linux/accessibility/text/atspi_text.h"

namespace nimbletype {

// Qt's plain text editors answer for every paragraph as if it were the first one: the boxes of all others are
// at the wrong height. Such an editor is recognised by its first two paragraphs, and what it says of later
// ones is not used. In the first one they forget the margin above the text, though not that beside it.
class AtspiFlatLines {
 public:
  static constexpr std::int64_t everywhere = std::numeric_limits<std::int64_t>::max();

  // Adds what has to be known to a batch of reads in the text at this position.
  void ask(DBusBatch& batch, const AtspiTextPosition& at);
  // After the batch: up to which offset boxes can be trusted.
  std::int64_t trustedEnd(const DBusBatch& batch, const AtspiTextPosition& at, AtspiBus& bus,
                          Deadline deadline);
  // After `trustedEnd`, of an offset behind that: by how many pixels a box there is too high. None where that
  // cannot be told. How far the text is scrolled is known by a fault of theirs: they move their boxes up by a
  // pixel for each line.
  std::optional<double> missingHeight(const DBusBatch& batch, const AtspiTextPosition& at,
                                      std::int64_t offset, AtspiBus& bus, Deadline deadline) const;
  // After `trustedEnd`: by how many pixels the boxes that can be trusted are too high.
  double missingMargin(const DBusBatch& batch) const;

 private:
  enum class Verdict { unknown, honest, flat };
  Verdict judge(std::int64_t secondParagraph, const AtspiTextPosition& at, AtspiBus& bus,
                Deadline deadline) const;

  AtspiRef element_;  // the verdict is about this one
  Verdict verdict_ = Verdict::unknown;
  bool asked_ = false;
  DBusBatch::Id beginning_ = 0, first_ = 0, frame_ = 0;
};

}  // namespace nimbletype
