#pragma once
#include "replay/commands/line_reader.h"
#include "replay/desktop/scripted_desktop.h"

namespace nimbletype {

// Changes the desktop around the field.
void applyWorld(LineReader& line, ScriptedDesktop& desktop);
// Changes what the context source would hand over.
void applyContext(LineReader& line, ScriptedDesktop& desktop);

}  // namespace nimbletype
