#include "input/caret/marker_cross_check.h"

#include <algorithm>
#include <string>

#include "input/field/text_around_caret.h"
#include "text/text.h"

namespace nimbletype {
namespace {

bool isBreak(char16_t unit) {
  return unit == u'\n' || unit == u'\r';
}

std::u16string withoutBreaks(std::string_view s) {
  std::u16string units = text::toUtf16(s);
  std::erase_if(units, isBreak);
  return units;
}

std::int64_t breaksAtEnd(std::string_view s) {
  const std::size_t last = s.find_last_not_of("\r\n");
  return static_cast<std::int64_t>(s.size() - (last == std::string_view::npos ? 0 : last + 1));
}

std::optional<std::string> textUpToCaret(const AXElement& field, const ObjectRef& selection) {
  const auto caret = field.endsOf(selection);
  if (!caret) return std::nullopt;
  const auto whole = field.endsOf(field.value({"AXTextMarkerRangeForUIElement", field.ref()}));
  const ObjectRef range = whole ? field.markerRange({whole->from, caret->from}) : nullptr;
  if (!range) return std::nullopt;
  return valueAs<std::string>(field.value({"AXStringForTextMarkerRange", range}));
}

}  // namespace

std::optional<std::int64_t> caretAfter(std::string_view markerText, std::string_view fieldText) {
  const std::u16string wanted = withoutBreaks(markerText), units = text::toUtf16(fieldText);
  std::size_t at = 0;
  for (const char16_t unit : wanted) {
    while (at < units.size() && isBreak(units[at])) ++at;
    if (at == units.size() || units[at] != unit) return std::nullopt;
    ++at;
  }
  for (auto left = breaksAtEnd(markerText); left > 0 && at < units.size() && isBreak(units[at]); --left) ++at;
  return static_cast<std::int64_t>(at);
}

// The markers win: they are what the application itself moves its caret with, while offsets are counted for
// us alone, and web content is known to leave them behind. But only where their text is the beginning of the
// field's: an empty one, or one from elsewhere on the page, says nothing.
std::optional<std::int64_t> caretByMarkers(const AXElement& field, const FieldState& state,
                                           std::string_view before) {
  const std::int64_t caret = state.selection ? state.selection->location : 0;
  if (!state.markerSelection || caret >= mostBefore) return std::nullopt;
  const auto byMarkers = textUpToCaret(field, state.markerSelection);
  if (!byMarkers || byMarkers->empty() || std::ssize(text::toUtf16(*byMarkers)) >= mostBefore)
    return std::nullopt;
  if (withoutBreaks(*byMarkers).size() == withoutBreaks(before).size()) return std::nullopt;
  const auto fieldText = field.text({0, mostBefore});
  return fieldText ? caretAfter(*byMarkers, *fieldText) : std::nullopt;
}

}  // namespace nimbletype
