#pragma once
#include <string_view>

#include "replay/commands/line_reader.h"
#include "replay/desktop/scripted_desktop.h"

namespace nimbletype {

// What a line of a replay does to the scripted desktop. Throws LineError for a line that is not valid.
using ReplayCommand = void (*)(LineReader&, ScriptedDesktop&);

// The command of a kind of line; none for a kind that does not exist.
ReplayCommand replayCommand(std::string_view kind);

}  // namespace nimbletype
