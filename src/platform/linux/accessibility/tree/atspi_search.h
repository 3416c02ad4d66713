#pragma once
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/accessibility/tree/atspi_bus.h"
#include "platform/linux/accessibility/tree/atspi_roles.h"

// Questions to an application's tree of accessibles, and the reading of their answers.
namespace nimbletype::atspi {

inline constexpr const char* accessible = "org.a11y.atspi.Accessible";
inline constexpr const char* component = "org.a11y.atspi.Component";
inline constexpr const char* textInterface = "org.a11y.atspi.Text";
inline constexpr const char* editableText = "org.a11y.atspi.EditableText";
inline constexpr const char* document = "org.a11y.atspi.Document";

std::uint32_t roleOf(GVariant* reply);
AtspiStates statesOf(GVariant* reply);
// A (bus name, path) pair; none for the null object.
AtspiRef objectOf(GVariant* pair);
std::vector<AtspiRef> objectsOf(GVariant* reply);

// The children, unless there are more than `most`: spreadsheets have billions.
std::optional<std::vector<AtspiRef>> childrenWithin(AtspiBus& bus, const AtspiRef& parent, std::int32_t most,
                                                    Deadline deadline);
// Those that are on screen.
std::vector<AtspiRef> shownOf(AtspiBus& bus, const std::vector<AtspiRef>& objects, Deadline deadline);

// The top-level windows of an application.
std::vector<AtspiRef> windowsOf(AtspiBus& bus, const std::string& application, Deadline deadline);
AtspiRef findActiveWindow(AtspiBus& bus, const std::string& application, Deadline deadline);
// The focused element inside the window.
AtspiRef findFocused(AtspiBus& bus, const AtspiRef& window, Deadline deadline);

}  // namespace nimbletype::atspi
