#include "input/source/field_reader.h"

#include <utility>

#include "input/caret/marker_cross_check.h"
#include "input/field/field_role.h"

namespace nimbletype {
namespace {

FieldSnapshot describe(const RunningApp& app, const AXElement& element, const FieldState& state) {
  FieldSnapshot snapshot;
  snapshot.bundleID = app.bundleID;
  snapshot.appName = app.appName.empty() ? app.bundleID : app.appName;
  snapshot.fieldKey = app.bundleID + ":" + std::to_string(element.ref()->hash());
  snapshot.role = state.role;
  snapshot.selectionLength = state.selection ? state.selection->length : 0;
  snapshot.fieldFrame = state.frame;
  snapshot.isSecure = state.isSecure;
  return snapshot;
}

}  // namespace

FieldReader::Reading FieldReader::read(const RunningApp& app, const AXElement& element) {
  const auto refused = [](std::string reason) { return Reading{std::nullopt, std::move(reason)}; };
  const bool keepOut = secureInput_.isOn();
  FieldState state = readFieldState(element, keepOut);
  // An element that vanished, or an application that hangs.
  if (state.role.empty()) return refused(no_field::nothingFocused(app.bundleID));
  if (!state.takesText) return refused(no_field::notATextField(app.bundleID, state.role));
  if (!keepOut && !state.selection) return refused(no_field::noCaretPosition(app.bundleID, state.role));
  const std::string keepsItsText = no_field::keepsItsText(app.bundleID, state.role);
  if (state.isSecure) return {describe(app, element, state), keepsItsText};

  auto text = readText(element, state);
  // No text where there is some would look like a field that was emptied.
  if (!text) return refused(keepsItsText);
  FieldSnapshot snapshot = describe(app, element, state);
  const auto caret =
      caretFinder_.find({element, state, *text, snapshot.fieldKey, app.bundleID + " " + state.role});
  snapshot.before = std::move(text->before);
  snapshot.after = std::move(text->after);
  snapshot.fontSize = text->font.size;
  snapshot.fontName = std::move(text->font.name);
  snapshot.lineStartX = text->lineStartX;
  if (caret) snapshot.caretRect = caret->rect;
  if (caret && caret->lineStartX) snapshot.lineStartX = caret->lineStartX;
  return {std::move(snapshot), std::nullopt};
}

std::optional<FieldText> FieldReader::readText(const AXElement& element, FieldState& state) {
  auto text = textReader_.read(element, state);
  if (!text) return std::nullopt;
  const auto caret = caretByMarkers(element, state, text->before);
  if (!caret) return text;
  state.selection->location = *caret;
  return textReader_.read(element, state);
}

}  // namespace nimbletype
