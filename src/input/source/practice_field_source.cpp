#include "input/source/practice_field_source.h"

#include <algorithm>
#include <string_view>

#include "input/field/field_role.h"
#include "input/field/text_around_caret.h"
#include "text/text.h"

namespace nimbletype {
namespace {

constexpr const char* productName = "Nimbletype";
constexpr const char* role = "AXTextArea";

std::string part(const std::u16string& text, const TextRange& range) {
  const auto size = static_cast<std::int64_t>(text.size());
  const std::int64_t from = std::min(range.location, size);
  return text::toUtf8(std::u16string_view(text).substr(
      static_cast<std::size_t>(from), static_cast<std::size_t>(std::min(range.length, size - from))));
}

}  // namespace

void PracticeFieldSource::focusChanged(bool focused) {
  if (focused == focused_) return;
  focused_ = focused;
  if (changed_) changed_(Change::focus);
}

void PracticeFieldSource::valueChanged() {
  if (focused_ && changed_) changed_(Change::value);
}

std::optional<FieldSnapshot> PracticeFieldSource::snapshot() {
  if (!focused_) return std::nullopt;
  LocalFieldState state = field_.state();
  const auto count = static_cast<std::int64_t>(state.text.size());
  const TextRange selection = count > 0 ? validSelection(state.selection, count) : TextRange{};
  FieldSnapshot snapshot;
  snapshot.fieldKey = bundleID_ + ":practice";
  snapshot.bundleID = bundleID_;
  snapshot.appName = productName;
  snapshot.role = role;
  snapshot.before = endOfText(part(state.text, rangeBefore(selection)));
  snapshot.after = startOfText(part(state.text, rangeAfter(selection, count)));
  snapshot.selectionLength = selection.length;
  snapshot.caretRect = state.caretRect;
  snapshot.lineStartX = state.lineStartX;
  snapshot.fieldFrame = state.frame;
  snapshot.fontSize = state.font.size;
  snapshot.fontName = std::move(state.font.name);
  snapshot.windowTitle = std::move(state.windowTitle);
  snapshot.isLocal = true;
  return snapshot;
}

std::optional<std::string> PracticeFieldSource::whyNoField() const {
  return focused_ ? std::nullopt : std::optional(no_field::nothingFocused(bundleID_));
}

void PracticeFieldSource::insert(const std::string& text, InsertionMethod) {
  if (focused_ && !text.empty()) field_.replaceSelection(text);
}

void PracticeFieldSource::deleteBackwards(int count) {
  if (focused_ && count > 0) field_.deleteBackwards(count);
}

}  // namespace nimbletype
