#pragma once
#include <chrono>
#include <functional>
#include <stdexcept>
#include <string>

namespace nimbletype {

using Clock = std::chrono::steady_clock;

// A wait that ended without what it waited for; the text is for people.
class GaveUp : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Runs the main loop, that of GLib and of Qt, until the condition holds; throws after `patience`.
void waitFor(const std::string& what, const std::function<bool()>& condition,
             std::chrono::milliseconds patience = std::chrono::seconds(30));
// For those who have something to wait on by inheritance.
struct RealTime {
  static void waitFor(const std::string& what, const std::function<bool()>& condition) {
    nimbletype::waitFor(what, condition);
  }
};
// The same without complaint: whether the condition came to hold.
bool comesTrue(const std::function<bool()>& condition,
               std::chrono::milliseconds patience = std::chrono::seconds(30));
// Runs the main loop for this long, as a person rests between keys.
void rest(std::chrono::milliseconds time);

// From now on a request to end this process makes the wait under way throw, so that everything started is
// ended.
void giveUpOnSignals();

inline double millisecondsBetween(Clock::time_point from, Clock::time_point to) {
  return std::chrono::duration<double, std::milli>(to - from).count();
}

}  // namespace nimbletype
