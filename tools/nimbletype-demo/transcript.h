#pragma once
#include <fstream>
#include <span>
#include <string>

#include "tools/stage/scene/key_timing.h"
#include "tools/stage/waiting.h"

namespace nimbletype {

// What happened, for people: to a file and to standard output, each line with the milliseconds since the
// start.
class Transcript {
 public:
  explicit Transcript(const std::string& file) : file_(file) {}

  void say(const std::string& line);
  void plain(const std::string& line);

 private:
  std::ofstream file_;
  Clock::time_point start_ = Clock::now();
};

// "12.3 ms".
std::string inMilliseconds(double milliseconds);
// The road of one key press, step by step, on one line.
std::string described(const KeyTiming& timing);
// A table of how long each step took over many key presses.
std::string tableOf(std::span<const KeyTiming> timings);

}  // namespace nimbletype
