#include "replay/desktop/scripted_field.h"

#include <utility>

#include "text/text.h"

namespace nimbletype {
namespace {

constexpr std::size_t longestBefore = 3000, longestAfter = 500;

FieldSnapshot ordinaryTextArea() {
  FieldSnapshot field;
  field.fieldKey = "com.example.editor:1";
  field.bundleID = "com.example.editor";
  field.appName = "Editor";
  field.role = "AXTextArea";
  field.caretRect = TopLeftRect{106, 106, 1, 16};
  field.lineStartX = 106;
  field.fieldFrame = TopLeftRect{100, 100, 600, 200};
  field.fontSize = 13;
  return field;
}

}  // namespace

ScriptedField::ScriptedField(ReplayOutput& output) : output_(output), field_(ordinaryTextArea()) {}

std::optional<FieldSnapshot> ScriptedField::snapshot() {
  if (whyNoField_) return std::nullopt;
  FieldSnapshot snapshot = field_;
  snapshot.before = text::lastCharacters(field_.before, longestBefore);
  snapshot.after = text::firstCharacters(field_.after, longestAfter);
  return snapshot;
}

void ScriptedField::report(Change change) {
  whyNoField_.reset();
  if (changed_) changed_(change);
}

void ScriptedField::lose(std::string reason) {
  whyNoField_ = std::move(reason);
  if (changed_) changed_(Change::focus);
}

void ScriptedField::replaceBeforeCaret(std::size_t deleted, std::string_view inserted) {
  const std::string_view tail = text::lastCharacters(field_.before, deleted);
  field_.before.resize(field_.before.size() - tail.size());
  field_.before += inserted;
  field_.selectionLength = 0;
}

void ScriptedField::type(std::string_view character) {
  if (whyNoField_) return;
  replaceBeforeCaret(0, character);
  report(Change::value);
}

void ScriptedField::backspace() {
  if (whyNoField_) return;
  // With text selected the key deletes the selection alone.
  replaceBeforeCaret(field_.selectionLength > 0 ? 0 : 1, {});
  report(Change::value);
}

void ScriptedField::insert(const std::string& text, InsertionMethod method) {
  output_.print("insert", {{"text", text}, {"method", rawValue(method)}});
  replaceBeforeCaret(0, text);
  printField();
}

void ScriptedField::deleteBackwards(int count) {
  output_.print("delete", {{"count", count}});
  replaceBeforeCaret(static_cast<std::size_t>(std::max(count, 0)), {});
  printField();
}

void ScriptedField::printField() {
  output_.print("field", {{"before", field_.before}, {"after", field_.after}});
  undelivered_ = true;
}

void ScriptedField::deliverChanges() {
  while (std::exchange(undelivered_, false)) report(Change::value);
}

}  // namespace nimbletype
