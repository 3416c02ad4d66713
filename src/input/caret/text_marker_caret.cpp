#include "input/caret/text_marker_caret.h"

#include <cmath>

#include "text/text.h"

namespace nimbletype {
namespace {

using Box = std::optional<TopLeftRect>;

constexpr double widestSelection = 40, largestCharacter = 100, lowestLine = 6, highestLine = 40;  // points

bool isLine(const TopLeftRect& box) {
  return box.height >= lowestLine && box.height < highestLine;
}

// Sizes in whole points, for the log.
std::string sizeOf(const Box& box) {
  if (!box) return "none";
  return std::to_string(std::lround(box->width)) + "x" + std::to_string(std::lround(box->height));
}

// Reads of one field with markers and marker ranges as parameters; each may be none.
class MarkerReads {
 public:
  explicit MarkerReads(const AXElement& field) : field_(field) {}

  Box bounds(const ObjectRef& range) const { return ask<TopLeftRect>("AXBoundsForTextMarkerRange", range); }
  std::string string(const ObjectRef& range) const {
    return ask<std::string>("AXStringForTextMarkerRange", range).value_or("");
  }
  ObjectRef object(const char* attribute, const ObjectRef& parameter) const {
    return ask<ObjectRef>(attribute, parameter).value_or(nullptr);
  }
  ObjectRef range(const ObjectRef& from, const ObjectRef& to) const {
    return from && to ? field_.markerRange({from, to}) : nullptr;
  }
  Box line(const ObjectRef& marker) const {
    const Box box = bounds(object("AXLineTextMarkerRangeForTextMarker", marker));
    return box && isLine(*box) ? box : std::nullopt;
  }
  const AXElement& field() const { return field_; }

 private:
  template <typename T>
  std::optional<T> ask(const char* attribute, const ObjectRef& parameter) const {
    return parameter ? valueAs<T>(field_.value({attribute, parameter})) : std::nullopt;
  }
  const AXElement& field_;
};

// The run that shows the character before the caret, where that is an element of its own.
std::optional<MarkerCaret> caretInRunOf(const MarkerReads& reads, const ObjectRef& previous,
                                        const ObjectRef& caret) {
  const AXElement leaf = reads.field().neighbour(reads.object("AXUIElementForTextMarker", previous));
  if (!leaf || leaf == reads.field()) return std::nullopt;
  const ObjectRef whole = reads.object("AXTextMarkerRangeForUIElement", leaf.ref());
  const auto ends = reads.field().endsOf(whole);
  const auto frame = valueAs<TopLeftRect>(leaf.value({"AXFrame", {}}));
  if (!ends || !frame) return std::nullopt;
  const TextRun run{reads.string(whole), *frame};
  const std::string upToCaret = reads.string(reads.range(ends->from, caret));
  const auto place = caretInRun(run, upToCaret);
  if (!place) return std::nullopt;
  return MarkerCaret{place, "caret found through text runs (" + std::to_string(text::utf16Length(upToCaret)) +
                                " of " + std::to_string(text::utf16Length(run.text)) + " units)"};
}

MarkerCaret found(const CaretPlace& place, const MarkerBoxes& boxes, bool followsLineBreak) {
  const bool throughLine = followsLineBreak && boxes.line;
  return {place, throughLine ? "caret found through line box (" + sizeOf(boxes.line) + ")"
                             : "caret found through text markers"};
}

std::optional<CaretPlace> caretFrom(const MarkerBoxes& boxes, bool followsLineBreak) {
  if (followsLineBreak && boxes.line) {
    const TopLeftRect& line = *boxes.line;
    return CaretPlace{{line.x, line.y, 1, line.height}, line.x};
  }
  return caretFromCharacters({boxes.selection, boxes.previousCharacter, {}}, followsLineBreak);
}

}  // namespace

MarkerBoxes plausible(const MarkerBoxes& boxes) {
  const auto kept = [](const Box& box, auto fits) { return box && fits(*box) ? box : std::nullopt; };
  return {kept(boxes.selection,
               [](const auto& b) { return b.width < widestSelection && !(b.x <= 0 && b.y <= 0); }),
          kept(boxes.previousCharacter,
               [](const auto& b) { return b.width < largestCharacter && b.height < largestCharacter; }),
          kept(boxes.line, isLine)};
}

std::optional<CaretPlace> caretInRun(const TextRun& run, std::string_view upToCaret) {
  const bool usable = isLine(run.frame) && run.frame.width > 0 && !upToCaret.empty();
  if (!usable || !std::string_view(run.text).starts_with(upToCaret)) return std::nullopt;
  const double share =
      static_cast<double>(text::utf16Length(upToCaret)) / static_cast<double>(text::utf16Length(run.text));
  return CaretPlace{{run.frame.x + share * run.frame.width, run.frame.y, 1, run.frame.height}, {}};
}

std::optional<CaretPlace> caretUnder(const std::optional<TopLeftRect>& lineAbove) {
  if (!lineAbove || !isLine(*lineAbove)) return std::nullopt;
  return CaretPlace{{lineAbove->x, lineAbove->bottom(), 1, lineAbove->height}, lineAbove->x};
}

MarkerCaret caretThroughTextMarkers(const AXElement& field, const ObjectRef& selection,
                                    bool followsLineBreak) {
  const auto ends = field.endsOf(selection);
  if (!ends) return {{}, "has no text-marker selection"};
  const MarkerReads reads(field);
  const ObjectRef previous = reads.object("AXPreviousTextMarkerForTextMarker", ends->from);
  const MarkerBoxes told{reads.bounds(selection), reads.bounds(reads.range(previous, ends->from)),
                         followsLineBreak ? reads.line(ends->from) : std::nullopt};
  const MarkerBoxes boxes = plausible(told);
  if (const auto place = caretFrom(boxes, followsLineBreak)) return found(*place, boxes, followsLineBreak);

  // The character before a caret on a new line belongs to the line above, and so does its run.
  if (!followsLineBreak)
    if (auto caret = caretInRunOf(reads, previous, ends->from)) return *caret;
  const ObjectRef lineAbove = reads.object("AXPreviousLineStartTextMarkerForTextMarker", ends->from);
  if (const auto place = caretUnder(reads.line(lineAbove)))
    return {place, "caret found through text markers under the line above"};
  return {{},
          "has text markers but no box for them (marker selection " + sizeOf(told.selection) +
              ", marker before " + sizeOf(told.previousCharacter) + ")"};
}

}  // namespace nimbletype
