#pragma once
#include <istream>
#include <ostream>

namespace nimbletype {

// Runs a replay: one JSON object a line in, one a line out. Reads no clock, file or setting of the machine.
// 0, or 2 after the first line that is not valid, with one sentence on `errors`.
int runReplay(std::istream& input, std::ostream& output, std::ostream& errors);

}  // namespace nimbletype
