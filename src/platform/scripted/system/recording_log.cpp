#include "platform/scripted/system/recording_log.h"

namespace nimbletype {

void RecordingLog::log(std::string_view category, std::string_view message) {
  const Line line{std::string(category), std::string(message)};
  lines.push_back(line);
  if (onLine) onLine(line);
}

}  // namespace nimbletype
