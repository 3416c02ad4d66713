#pragma once
#include <map>
#include <string>
#include <vector>

#include "platform/linux/accessibility/tree/atspi_events.h"
#include "platform/linux/accessibility/tree/atspi_roles.h"

namespace nimbletype {

// Which element and window of each application has the focus: told by its events, and searched for where none
// has been heard yet. Applications claim the focus for things that do not have it, so a claim is looked at
// first, in the read that asks for the focus.
class AtspiFocus {
 public:
  explicit AtspiFocus(AtspiBus& bus) : bus_(bus) {}

  // Whether the focused element or window may be another one now.
  struct Effect {
    bool element = false, window = false;
  };
  Effect heard(const AtspiEvent& event);

  AtspiRef element(const std::string& application, Deadline deadline);
  AtspiRef window(const std::string& application, Deadline deadline);

 private:
  struct Claim {
    AtspiRef element;
    bool byCaret = false;  // no focus event, its caret moved
  };
  struct Application {
    AtspiRef element, window;
    std::vector<Claim> claims;      // in the order they were made, not looked at yet
    std::vector<AtspiRef> refused;  // carets that turned out to move elsewhere
    std::int64_t searchNotBefore = 0;
  };
  struct Facts {
    std::uint32_t role = 0;
    AtspiStates states;
    bool known = false;
  };

  bool focused(Application& app, const AtspiRef& element);
  bool unfocused(Application& app, const AtspiRef& element);
  bool caretMoved(Application& app, const AtspiRef& element);
  void settle(Application& app, Deadline deadline);
  bool accepts(const Application& app, const Claim& claim, const Facts& claimed, const Facts& current) const;
  Facts factsOf(const AtspiRef& element, Deadline deadline) const;

  AtspiBus& bus_;
  std::map<std::string, Application> applications_;
};

}  // namespace nimbletype
