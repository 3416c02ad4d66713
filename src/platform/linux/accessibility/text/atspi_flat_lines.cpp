#include "platform/linux/accessibility/text/atspi_flat_lines.h"

#include <algorithm>
#include <vector>

#include "text/text.h"

namespace nimbletype {
namespace {

constexpr std::int64_t longestBeginning = 4000;
constexpr int textMargin = 4, thickestFrame = 2;  // pixels, as Qt has them

DBusCall boxCall(const AtspiTextPosition& at, std::int64_t offset) {
  return {at.element->bus(), at.element->path(), atspi::textInterface, "GetCharacterExtents",
          g_variant_new("(iu)", static_cast<gint32>(offset), 0u)};
}

struct Corner {
  bool known = false;
  int left = 0, top = 0, right = 0, height = 0;
};
Corner cornerOf(GVariant* box) {
  const VariantPtr x = childOf(box, 0), y = childOf(box, 1), width = childOf(box, 2),
                   height = childOf(box, 3);
  if (!x || !y || !width || !height || g_variant_get_int32(height.get()) <= 0) return {};
  const int left = g_variant_get_int32(x.get());
  return {true, left, g_variant_get_int32(y.get()), left + g_variant_get_int32(width.get()),
          g_variant_get_int32(height.get())};
}

// The line breaks before an offset, in UTF-16 units.
std::vector<std::int64_t> breaksBefore(const std::u16string& text, std::int64_t offset) {
  std::vector<std::int64_t> breaks;
  for (std::int64_t i = 0; i < offset; ++i)
    if (text[static_cast<std::size_t>(i)] == u'\n') breaks.push_back(i);
  return breaks;
}

}  // namespace

void AtspiFlatLines::ask(DBusBatch& batch, const AtspiTextPosition& at) {
  if (!sameObject(element_, at.element)) {
    element_ = at.element;
    verdict_ = Verdict::unknown;
  }
  asked_ =
      at.unit == OffsetUnit::utf16 && at.states.has(atspi_state::multiLine) && verdict_ != Verdict::honest;
  if (!asked_) return;
  const auto length = static_cast<gint32>(std::min(at.count, longestBeginning));
  beginning_ = batch.call({at.element->bus(), at.element->path(), atspi::textInterface, "GetText",
                           g_variant_new("(ii)", 0, length)});
  first_ = batch.call(boxCall(at, 0));
  frame_ = batch.call(
      {at.element->bus(), at.element->path(), atspi::component, "GetExtents", g_variant_new("(u)", 0u)});
}

std::int64_t AtspiFlatLines::trustedEnd(const DBusBatch& batch, const AtspiTextPosition& at, AtspiBus& bus,
                                        Deadline deadline) {
  if (!asked_) return everywhere;
  const std::string beginning = stringOf(childOf(batch.reply(beginning_), 0).get());
  const std::size_t lineBreak = beginning.find('\n');
  if (lineBreak == std::string::npos) return verdict_ == Verdict::flat ? longestBeginning : everywhere;
  const auto end = static_cast<std::int64_t>(text::utf16Length(beginning.substr(0, lineBreak)));
  if (verdict_ == Verdict::unknown) verdict_ = judge(end + 1, at, bus, deadline);
  return verdict_ == Verdict::honest ? everywhere : end;
}

// An end of text without a character tells nothing: the judgement waits for a second paragraph. Both are
// asked at once, because a field may scroll meanwhile.
AtspiFlatLines::Verdict AtspiFlatLines::judge(std::int64_t secondParagraph, const AtspiTextPosition& at,
                                              AtspiBus& bus, Deadline deadline) const {
  if (secondParagraph >= at.count) return Verdict::unknown;
  DBusBatch batch(bus.connection(), deadline);
  const auto first = batch.call(boxCall(at, 0)), second = batch.call(boxCall(at, secondParagraph));
  batch.wait();
  const Corner upper = cornerOf(batch.reply(first)), lower = cornerOf(batch.reply(second));
  if (!upper.known || !lower.known) return Verdict::unknown;
  return lower.top - upper.top > upper.height / 2 ? Verdict::honest : Verdict::flat;
}

std::optional<double> AtspiFlatLines::missingHeight(const DBusBatch& batch, const AtspiTextPosition& at,
                                                    std::int64_t offset, AtspiBus& bus,
                                                    Deadline deadline) const {
  const Corner first = cornerOf(batch.reply(first_)), field = cornerOf(childOf(batch.reply(frame_), 0).get());
  const std::u16string text = text::toUtf16(stringOf(childOf(batch.reply(beginning_), 0).get()));
  if (verdict_ != Verdict::flat || !first.known || !field.known) return std::nullopt;
  if (offset > static_cast<std::int64_t>(text.size())) return std::nullopt;
  const int frame = first.left - field.left - textMargin;
  const int scrolled = frame - (first.top - field.top);  // lines
  if (frame < 0 || frame > thickestFrame || scrolled < 0) return std::nullopt;

  // Paragraphs that may be wrapped are asked for the line they end on.
  const std::int64_t surelyFits = (field.right - field.left) / first.height;
  const auto breaks = breaksBefore(text, offset);
  DBusBatch ends(bus.connection(), deadline);
  std::vector<DBusBatch::Id> asked;
  for (std::size_t i = 0; i < breaks.size(); ++i)
    if (breaks[i] - (i == 0 ? 0 : breaks[i - 1]) > surelyFits)
      asked.push_back(ends.call(boxCall(at, breaks[i])));
  ends.wait();
  auto lines = static_cast<int>(breaks.size());
  for (const auto id : asked) {
    const Corner end = cornerOf(ends.reply(id));
    if (!end.known) return std::nullopt;
    lines += (end.top - first.top + first.height / 2) / first.height;
  }
  // The margin above the text is scrolled away with the first line.
  const int margin = scrolled == 0 ? textMargin : 0;
  return margin + scrolled + (lines - scrolled) * first.height;
}

double AtspiFlatLines::missingMargin(const DBusBatch& batch) const {
  if (!asked_ || verdict_ == Verdict::honest) return 0;
  const Corner text = cornerOf(batch.reply(first_));
  const Corner field = cornerOf(childOf(batch.reply(frame_), 0).get());
  if (!text.known || !field.known) return 0;
  // Characters from right to left are told to begin at their right edge.
  const int above = text.top - field.top, left = text.left - field.left, right = field.right - text.left;
  // Honest editors have the same margin on all sides. Line numbers stand in the left one.
  const bool looksFlat = above >= 0 && above <= thickestFrame && std::min(left, right) == above + textMargin;
  const bool isFlat = verdict_ == Verdict::flat && above >= 0 && above <= thickestFrame;
  return looksFlat || isFlat ? textMargin : 0;
}

}  // namespace nimbletype
