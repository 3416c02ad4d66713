#pragma once
#include <string>
#include <vector>

namespace nimbletype {

// The name of the program that a command line starts, without its folder: the script's where the command is
// an interpreter, the module's where Python is to run one. Empty when the line names none, as that of a shell
// that waits for commands.
std::string programStartedBy(const std::vector<std::string>& words);

}  // namespace nimbletype
