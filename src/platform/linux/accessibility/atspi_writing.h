#pragma once
#include <string>

#include "platform/linux/accessibility/text/atspi_text.h"

namespace nimbletype {

// Replaces the selection of an editable text, or inserts at its caret, and puts the caret behind what was
// inserted. False when the application offers no such thing.
bool replaceSelection(AtspiBus& bus, const AtspiRef& element, const std::string& text, Deadline deadline);

// Selects a range of UTF-16 units; an empty one places the caret.
bool select(AtspiBus& bus, const AtspiRef& element, const TextRange& range, Deadline deadline);

// Chromium builds the tree of its pages only after somebody has asked for the attributes of a window.
bool wakeWebContent(AtspiBus& bus, const std::string& application, Deadline deadline);

}  // namespace nimbletype
