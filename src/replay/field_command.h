#pragma once
#include "replay/line_reader.h"
#include "replay/scripted_desktop.h"

namespace nimbletype {

// The field source reports a snapshot, or that there is no field.
void applyField(LineReader& line, ScriptedDesktop& desktop);

}  // namespace nimbletype
