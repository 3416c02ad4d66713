#include "input/caret/field_reading.h"

#include <vector>

#include "input/field/field_role.h"
#include "input/field/text_around_caret.h"

namespace nimbletype {
namespace {

// The places of the reads in one batch.
struct TextBatch {
  std::vector<AttributeRead> reads;
  std::size_t add(const char* attribute, TextRange range) {
    reads.push_back({attribute, range});
    return reads.size() - 1;
  }
};

bool takesText(const AXElement& element, std::string_view role) {
  switch (fieldRole(role)) {
    case FieldRole::field:
    case FieldRole::secureField:
      return true;
    case FieldRole::notAField:
      return false;
    case FieldRole::dependsOnValue:
      return valueAs<bool>(element.value({"AXIsSettable:AXValue", {}})).value_or(false);
  }
  return false;
}

std::optional<std::string> textFrom(const AXElement& element, const AttributeValue& plain,
                                    const TextRange& range) {
  if (auto text = valueAs<std::string>(plain)) return text;
  if (range.length == 0) return "";
  return valueAs<std::string>(element.value({"AXAttributedStringForRange", range}));
}

// Applications answer with an empty frame for elements that they have not laid out.
std::optional<TopLeftRect> frameFrom(const AttributeValue& value) {
  const auto frame = valueAs<TopLeftRect>(value);
  const bool usable = frame && isFinite(*frame) && frame->width > 0 && frame->height > 0;
  return usable ? frame : std::nullopt;
}

// A line start outside the field has been scrolled away sideways or was never there.
std::optional<double> leftEdge(const AttributeValue& value, const std::optional<TopLeftRect>& frame) {
  const auto box = valueAs<TopLeftRect>(value);
  if (!box || box->height <= 0) return std::nullopt;
  if (frame && (box->x < frame->x - 1 || box->x > frame->right())) return std::nullopt;
  return box->x;
}

}  // namespace

FieldState readFieldState(const AXElement& element, bool keepOut) {
  std::vector<AttributeRead> reads{{"AXRole", {}}, {"AXSubrole", {}}, {"AXFrame", {}}};
  if (!keepOut)
    reads.insert(
        reads.end(),
        {{"AXSelectedTextRange", {}}, {"AXNumberOfCharacters", {}}, {"AXSelectedTextMarkerRange", {}}});
  const auto values = element.read(reads);

  FieldState state;
  state.role = valueAs<std::string>(values[0]).value_or("");
  state.isSecure =
      keepOut || isSecureRole(state.role) || isSecureRole(valueAs<std::string>(values[1]).value_or(""));
  state.frame = frameFrom(values[2]);
  if (!keepOut) {
    state.characterCount = characterCount(valueAs<double>(values[4]));
    if (const auto selection = valueAs<TextRange>(values[3]))
      state.selection = validSelection(*selection, state.characterCount);
    state.markerSelection = valueAs<ObjectRef>(values[5]).value_or(nullptr);
  }
  state.takesText = takesText(element, state.role);
  return state;
}

std::optional<FieldText> FieldTextReader::read(const AXElement& element, const FieldState& state) {
  const TextRange selection = state.selection.value_or(TextRange{});
  const std::int64_t caret = selection.location;
  const TextRange before = rangeBefore(selection), after = rangeAfter(selection, state.characterCount);
  const bool atStart = caret == 0, atEnd = state.characterCount && caret >= *state.characterCount;
  const bool wraps = state.role == "AXTextArea";

  TextBatch batch;
  const auto beforeAt = batch.add("AXStringForRange", before), afterAt = batch.add("AXStringForRange", after);
  const auto emptyAt = batch.add("AXBoundsForRange", {caret, 0});
  const auto previousAt = atStart ? 0 : batch.add("AXBoundsForRange", {caret - 1, 1});
  const auto nextAt = atEnd ? 0 : batch.add("AXBoundsForRange", {caret, 1});
  const auto fontAt = batch.add("AXFontForRange", {atStart ? 0 : caret - 1, 1});
  const bool guessed = wraps && isKnown(element);
  const auto lineAt = guessed ? batch.add("AXBoundsForRange", {paragraph_.start, 1}) : 0;
  const auto values = element.read(batch.reads);

  const auto textBefore = textFrom(element, values[beforeAt], before);
  if (!textBefore) return std::nullopt;
  FieldText text;
  text.before = endOfText(*textBefore);
  text.after = startOfText(textFrom(element, values[afterAt], after).value_or(""));
  text.boxes.emptyRange = valueAs<TopLeftRect>(values[emptyAt]);
  if (!atStart) text.boxes.previousCharacter = valueAs<TopLeftRect>(values[previousAt]);
  if (!atEnd) text.boxes.nextCharacter = valueAs<TopLeftRect>(values[nextAt]);
  text.font = valueAs<TextFont>(values[fontAt]).value_or(TextFont{});

  const auto start = wraps ? paragraphStart(*textBefore, caret) : std::nullopt;
  if (!start) return text;
  const bool right = guessed && *start == paragraph_.start;
  text.lineStartX = leftEdge(
      right ? values[lineAt] : element.value({"AXBoundsForRange", TextRange{*start, 1}}), state.frame);
  paragraph_ = {element, *start};
  return text;
}

}  // namespace nimbletype
