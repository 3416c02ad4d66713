#include "input/caret/caret_finder.h"

#include "input/caret/caret_estimate.h"
#include "input/caret/caret_in_line.h"
#include "input/caret/caret_plausibility.h"
#include "input/caret/text_marker_caret.h"
#include "input/field/text_around_caret.h"
#include "text/text.h"

namespace nimbletype {
namespace {

constexpr std::size_t mostTold = 500;

// Numbers change with every key press; what they are about does not.
std::string withoutNumbers(const std::string& diagnosis) {
  return diagnosis.substr(0, diagnosis.find('('));
}

// Whether what was read begins where the field's text does.
bool isWhole(const CaretFinder::Field& field) {
  const auto& selection = field.state.selection;
  return selection && static_cast<std::int64_t>(text::utf16Length(field.text.before)) == selection->location;
}

}  // namespace

std::optional<CaretPlace> CaretFinder::find(const Field& field) {
  learnFont(field);
  if (auto place = throughCharacters(field)) return place;
  if (auto place = throughTextMarkers(field)) return place;
  return estimated(field);
}

void CaretFinder::learnFont(const Field& field) {
  const TextFont& font = field.text.font;
  if (font.size && *font.size > 0) rememberedFont_ = {field.key, *font.size, font.name};
}

std::optional<CaretPlace> CaretFinder::throughCharacters(const Field& field) {
  auto place = amongDirections(field);
  if (!place) place = caretFromCharacters(field.text.boxes, endsInLineBreak(field.text.before));
  if (!place || !field.state.frame || !isWhole(field)) return place;
  if (!isSuspiciouslyHigh(place->rect, *field.state.frame, field.text.before)) return place;
  const auto first = field.element.bounds({0, 1});
  if (!first || !isOnLineOf(place->rect, *first)) return place;
  tellOnce(field, "gives every line the box of the first one");
  return std::nullopt;
}

std::optional<CaretPlace> CaretFinder::amongDirections(const Field& field) {
  if (!field.state.selection) return std::nullopt;
  const LineAroundCaret line = lineAroundCaret(field.text.before, field.text.after);
  if (line.isPlain()) return std::nullopt;
  LineEndBoxes end;
  if (line.needsTail()) {
    const std::int64_t tail = field.state.selection->location - line.tail.units;
    const auto values = field.element.read({{"AXBoundsForRange", TextRange{tail - 1, 1}},
                                            {"AXBoundsForRange", TextRange{tail, line.tail.units}}});
    end = {valueAs<TopLeftRect>(values[0]), valueAs<TopLeftRect>(values[1])};
  }
  return caretInLine(line, field.text.boxes, end);
}

std::optional<CaretPlace> CaretFinder::throughTextMarkers(const Field& field) {
  const bool followsLineBreak = endsInLineBreak(field.text.before);
  auto caret = caretThroughTextMarkers(field.element, field.state.markerSelection, followsLineBreak);
  tellOnce(field, caret.diagnosis);
  return caret.place;
}

std::optional<CaretPlace> CaretFinder::estimated(const Field& field) {
  if (!field.state.frame) return std::nullopt;
  tellOnce(field, "caret measured from its text");
  return estimateCaret(field.text.before, *field.state.frame, fontOf(field), fonts_);
}

FontSpec CaretFinder::fontOf(const Field& field) const {
  const bool known = rememberedFont_ && rememberedFont_->fieldKey == field.key;
  if (!known)
    return {.name = field.text.font.name.value_or(""), .size = usualFontSize(field.state.frame->height)};
  return {.name = rememberedFont_->name.value_or(""), .size = rememberedFont_->size};
}

void CaretFinder::tellOnce(const Field& field, const std::string& diagnosis) {
  if (told_.size() >= mostTold) told_.clear();
  if (told_.emplace(field.key, withoutNumbers(diagnosis)).second)
    log_.log("input", field.name + ": " + diagnosis);
}

}  // namespace nimbletype
