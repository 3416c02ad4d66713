#pragma once
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace nimbletype {

// Runs a program with `input` as its standard input and returns what it printed; none when it failed, took
// longer than `seconds` or was called off. It is killed then. Blocks: not for the main thread.
std::optional<std::string> outputOf(const std::vector<std::string>& command, const std::string& input,
                                    double seconds, const std::function<bool()>& isCalledOff);

// The program's path, looked up as a shell would; empty when there is none.
std::string programNamed(const std::string& name);

}  // namespace nimbletype
