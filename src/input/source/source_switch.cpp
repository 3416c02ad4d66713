#include "input/source/source_switch.h"

#include "input/source/practice_field_source.h"

namespace nimbletype {

SourceSwitch::SourceSwitch(FieldSource& others) : others_(others) {
  others_.onChange([this](Change change) {
    if (&current() == &others_) tell(change);
  });
}

SourceSwitch::~SourceSwitch() {
  others_.onChange({});
  forgetPracticeField();
}

void SourceSwitch::setPracticeField(PracticeFieldSource& field) {
  forgetPracticeField();
  practice_ = &field;
  // It tells of nothing but its focus while it has none; then another field is before the user.
  field.onChange([this](Change change) { tell(change); });
  if (field.isFocused()) tell(Change::app);
}

void SourceSwitch::takeAway(PracticeFieldSource& field) {
  if (practice_ != &field) return;
  const bool wasFollowed = field.isFocused();
  forgetPracticeField();
  if (wasFollowed) tell(Change::app);
}

void SourceSwitch::forgetPracticeField() {
  if (!practice_) return;
  practice_->onChange({});
  practice_ = nullptr;
}

FieldSource& SourceSwitch::current() const {
  return practice_ && practice_->isFocused() ? *practice_ : others_;
}

void SourceSwitch::tell(Change change) const {
  if (changed_) changed_(change);
}

}  // namespace nimbletype
