#pragma once
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

namespace nimbletype {

// Measurements of one thing, in milliseconds.
class Spread {
 public:
  template <typename Duration>
  void add(Duration duration) {
    milliseconds_.push_back(std::chrono::duration<double, std::milli>(duration).count());
  }
  std::size_t count() const { return milliseconds_.size(); }
  static void printHead(const char* title) {
    std::printf("%-52s %6s %8s %8s %8s\n", title, "count", "median", "90 %", "most");
  }
  void print(const char* name) {
    std::ranges::sort(milliseconds_);
    const auto last = static_cast<double>(milliseconds_.size() - 1);
    const auto at = [&](double part) { return milliseconds_[static_cast<std::size_t>(part * last)]; };
    std::printf("%-52s %6zu %8.3f %8.3f %8.3f\n", name, milliseconds_.size(), at(0.5), at(0.9), at(1));
  }

 private:
  std::vector<double> milliseconds_;
};

}  // namespace nimbletype
