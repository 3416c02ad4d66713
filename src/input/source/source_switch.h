#pragma once
#include <functional>
#include <utility>

#include "input/field/field_source.h"

namespace nimbletype {

class PracticeFieldSource;

// The one source the engine follows: that of all other applications, or a practice field of our own while it
// has the focus. Changes of the source that is not followed are not told.
class SourceSwitch final : public FieldSource {
 public:
  explicit SourceSwitch(FieldSource& others);
  ~SourceSwitch() override;
  SourceSwitch(const SourceSwitch&) = delete;
  SourceSwitch& operator=(const SourceSwitch&) = delete;

  // Follows this field whenever it has the focus, until it is taken away. One at a time.
  void setPracticeField(PracticeFieldSource& field);
  void takeAway(PracticeFieldSource& field);

  std::optional<FieldSnapshot> snapshot() override { return current().snapshot(); }
  std::optional<std::string> whyNoField() const override { return current().whyNoField(); }
  void onChange(std::function<void(Change)> changed) override { changed_ = std::move(changed); }
  void insert(const std::string& text, InsertionMethod method) override { current().insert(text, method); }
  void deleteBackwards(int count) override { current().deleteBackwards(count); }

 private:
  FieldSource& current() const;
  void tell(Change change) const;
  void forgetPracticeField();

  FieldSource& others_;
  PracticeFieldSource* practice_ = nullptr;
  std::function<void(Change)> changed_;
};

}  // namespace nimbletype
