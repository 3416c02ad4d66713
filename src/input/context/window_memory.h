#pragma once
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "platform/desktop/screen_reader.h"
#include "platform/system/main_loop.h"

namespace nimbletype {

// The text of windows looked at lately, in memory alone and for a few minutes.
class WindowMemory {
 public:
  static constexpr std::size_t most = 4;
  static constexpr Milliseconds longest{5 * 60 * 1000};

  // Keeps the text of a window that is being left; nothing is kept of a window without any.
  void left(std::string key, std::vector<PlacedText> lines, MonotonicTime now);
  // What is known of the window, taken out of the memory: it is looked at again.
  std::optional<std::vector<PlacedText>> returnedTo(const std::string& key, MonotonicTime now);
  // The lines of the windows left last, the latest first, without those that are to be seen now.
  std::vector<PlacedText> lines(std::span<const PlacedText> seenNow, MonotonicTime now);
  void forget() { windows_.clear(); }
  bool isEmpty() const { return windows_.empty(); }

 private:
  struct Window {
    std::string key;
    std::vector<PlacedText> lines;
    MonotonicTime leftAt;
  };
  void forgetOld(MonotonicTime now);

  std::vector<Window> windows_;  // the latest first
};

}  // namespace nimbletype
