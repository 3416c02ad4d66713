#pragma once
#include "replay/commands/line_reader.h"
#include "replay/desktop/scripted_desktop.h"

namespace nimbletype {

// The field source reports a snapshot, or that there is no field.
void applyField(LineReader& line, ScriptedDesktop& desktop);

}  // namespace nimbletype
