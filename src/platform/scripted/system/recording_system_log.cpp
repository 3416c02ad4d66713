#include "platform/scripted/system/recording_system_log.h"

namespace nimbletype {

void RecordingSystemLog::log(std::string_view category, std::string_view message) {
  const Line line{std::string(category), std::string(message)};
  lines.push_back(line);
  if (onLine) onLine(line);
}

}  // namespace nimbletype
