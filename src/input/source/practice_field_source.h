#pragma once
#include <functional>
#include <string>
#include <utility>

#include "input/field/field_source.h"
#include "input/field/local_field.h"

namespace nimbletype {

// The field source for the practice field of our own windows. It is read directly: nothing of it goes through
// Accessibility, which cannot answer to the process that asks.
class PracticeFieldSource final : public FieldSource {
 public:
  // `bundleID` is this application's own. The field outlives the source.
  PracticeFieldSource(LocalField& field, std::string bundleID)
      : field_(field), bundleID_(std::move(bundleID)) {}

  // To be called by the window: the field got the focus, or lost it; its text or selection changed.
  void focusChanged(bool focused);
  void valueChanged();
  bool isFocused() const { return focused_; }

  std::optional<FieldSnapshot> snapshot() override;
  std::optional<std::string> whyNoField() const override;
  void onChange(std::function<void(Change)> changed) override { changed_ = std::move(changed); }
  // Every method leads to the same: the text is put into the field itself.
  void insert(const std::string& text, InsertionMethod method) override;
  void deleteBackwards(int count) override;

 private:
  LocalField& field_;
  std::string bundleID_;
  bool focused_ = false;
  std::function<void(Change)> changed_;
};

}  // namespace nimbletype
