#pragma once
#include <functional>
#include <optional>
#include <string>

#include "input/field/field_snapshot.h"

namespace nimbletype {

// What a field held when the user was done with it.
struct LeftField {
  FieldSnapshot snapshot;          // as last seen with nothing selected
  std::string ruleKey;             // of its site in a browser, else of its application
  bool acceptedSomething = false;  // a suggestion was taken in it, whole or in part
  bool isTerminal = false;
  bool isPrivateWindow = false;  // a browser's window that is to leave no traces
  // At most as much as a snapshot holds. Empty for a field that was ever secure.
  std::string text() const;
};

// "web:" and the domain in a browser, else "app:" and the bundle identifier.
std::string fieldRuleKey(const FieldSnapshot& snapshot);

// Follows the user's stay in one field and tells what it held once they leave it for another field or
// application, once its text is sent off, which empties it, and when it is lost. A stay that goes on after
// the field was lost for a moment is told again, with all of the text, if that changed. Main thread only.
class FieldSession {
 public:
  using Listener = std::function<void(const LeftField&)>;

  void onLeft(Listener left) { left_ = std::move(left); }
  // Asked when a field is entered: whether its application, now in front, is a terminal.
  void askTerminal(std::function<bool()> frontIsTerminal) { frontIsTerminal_ = std::move(frontIsTerminal); }

  void seen(const FieldSnapshot& snapshot);
  // A suggestion, or a part of one, was taken in the field. Spelling fixes and emoji are none.
  void accepted();
  // The field is lost, or the application quits.
  void leave();
  bool acceptedSomething() const { return field_ && field_->acceptedSomething; }

 private:
  void enter(const FieldSnapshot& snapshot);
  void follow(const FieldSnapshot& snapshot);

  std::optional<LeftField> field_;
  bool hadSelection_ = false;
  bool untold_ = false;  // something happened since the listener was told
  Listener left_;
  std::function<bool()> frontIsTerminal_;
};

}  // namespace nimbletype
