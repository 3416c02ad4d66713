#pragma once
#include <functional>

#include "input/field/field_source.h"
#include "replay/desktop/replay_output.h"

namespace nimbletype {

// The one field of a scripted desktop. What the engine inserts or deletes is in the text at once and told as
// an ordinary change as soon as `deliverChanges` is called.
class ScriptedField : public FieldSource {
 public:
  explicit ScriptedField(ReplayOutput& output);

  std::optional<FieldSnapshot> snapshot() override;
  std::optional<std::string> whyNoField() const override { return whyNoField_; }
  void onChange(std::function<void(Change)> changed) override { changed_ = std::move(changed); }
  void insert(const std::string& text, InsertionMethod method) override;
  void deleteBackwards(int count) override;

  FieldSnapshot& field() { return field_; }
  // The field was given new values, or lost for a reason.
  void report(Change change);
  void lose(std::string reason);
  // The user's own typing, one change each.
  void type(std::string_view character);
  void backspace();
  void deliverChanges();

 private:
  void replaceBeforeCaret(std::size_t deleted, std::string_view inserted);
  void printField();

  ReplayOutput& output_;
  FieldSnapshot field_;
  std::optional<std::string> whyNoField_{"no app: nothing focused"};
  std::function<void(Change)> changed_;
  bool undelivered_ = false;
};

}  // namespace nimbletype
