#pragma once
#include <cstdint>
#include <string>
#include <vector>

namespace nimbletype {

// One logical processor as the system describes it.
struct LogicalProcessor {
  int package = 0, core = 0;
  int speed = 0;  // in any unit common to all; 0 when not told
  bool operator==(const LogicalProcessor&) const = default;
};

struct ProcessorLayout {
  std::vector<LogicalProcessor> processors;
  double allowance = 0;  // how many of them this process may keep busy; 0 for all
  bool operator==(const ProcessorLayout&) const = default;
};

// How many threads evaluate a model best: one for each physical core of the fast kind, within what is
// allowed, and fewer for a small model.
int threadsFor(const ProcessorLayout& layout, std::uint64_t modelBytes);

// How many of `most` threads to use next, after an evaluation in which the model's thread had a processor for
// `busyShare` of the time. Threads that wait for one that has none waste the time of all.
int threadsAfter(double busyShare, int current, int most);

// What this machine has. Empty when it does not say.
ProcessorLayout readProcessorLayout();
// The same from a tree laid out as Linux lays out /sys.
ProcessorLayout readProcessorLayout(const std::string& sys);

// Measures for which share of the time since it was made its thread had a processor.
class BusyClock {
 public:
  BusyClock();
  double share() const;

 private:
  double wall_, busy_;  // seconds
};

// Gives the calling thread its name, and the standing of work that a user waits for.
void beginModelThread();

}  // namespace nimbletype
