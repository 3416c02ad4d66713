#include "core/completion/asking/field_session.h"

#include <utility>

#include "core/rules/rule_types.h"
#include "input/context/window_text.h"
#include "text/text.h"

namespace nimbletype {
namespace {

// What a selection covers is in neither part of a snapshot.
bool isWhole(const FieldSnapshot& snapshot) {
  return snapshot.selectionLength == 0 && !snapshot.isSecure;
}

bool isEmpty(const FieldSnapshot& snapshot) {
  return text::isBlank(snapshot.before) && text::isBlank(snapshot.after);
}

}  // namespace

std::string LeftField::text() const {
  return snapshot.isSecure ? std::string() : snapshot.before + snapshot.after;
}

std::string fieldRuleKey(const FieldSnapshot& snapshot) {
  const bool isSite = snapshot.domain && !snapshot.domain->empty();
  return isSite ? webRuleKey(*snapshot.domain) : appRuleKey(snapshot.bundleID);
}

void FieldSession::seen(const FieldSnapshot& snapshot) {
  if (field_ && field_->snapshot.fieldKey == snapshot.fieldKey) return follow(snapshot);
  leave();
  enter(snapshot);
}

void FieldSession::enter(const FieldSnapshot& snapshot) {
  field_ = LeftField{snapshot, fieldRuleKey(snapshot), false, frontIsTerminal_ && frontIsTerminal_(),
                     isPrivateTitle(snapshot.windowTitle.value_or(""))};
  hadSelection_ = snapshot.selectionLength > 0;
  untold_ = true;
}

void FieldSession::follow(const FieldSnapshot& snapshot) {
  const bool hadSelection = std::exchange(hadSelection_, snapshot.selectionLength > 0);
  if (snapshot.isSecure) field_->snapshot.isSecure = true;
  if (!isWhole(snapshot) || field_->snapshot.isSecure) return;
  // Text that goes all at once was sent; the user who deletes it selects it first.
  const bool wasSent = isEmpty(snapshot) && !isEmpty(field_->snapshot) && !hadSelection;
  if (wasSent) {
    leave();
    return enter(snapshot);
  }
  untold_ |= field_->text() != snapshot.before + snapshot.after;
  field_->snapshot = snapshot;
  field_->ruleKey = fieldRuleKey(snapshot);
  field_->isPrivateWindow |= isPrivateTitle(snapshot.windowTitle.value_or(""));
}

void FieldSession::accepted() {
  if (!field_) return;
  untold_ |= !std::exchange(field_->acceptedSomething, true);
}

void FieldSession::leave() {
  if (!field_ || !std::exchange(untold_, false) || !left_) return;
  const LeftField field = *field_;
  left_(field);
}

}  // namespace nimbletype
