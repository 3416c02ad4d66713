#pragma once
#include <functional>
#include <string>
#include <vector>

#include "platform/system/system_log.h"

namespace nimbletype {

// Keeps the diagnostic lines, and hands each on as it comes.
class RecordingSystemLog : public SystemLog {
 public:
  struct Line {
    std::string category, message;
    bool operator==(const Line&) const = default;
  };

  void log(std::string_view category, std::string_view message) override;

  std::vector<Line> lines;
  std::function<void(const Line&)> onLine;
};

}  // namespace nimbletype
