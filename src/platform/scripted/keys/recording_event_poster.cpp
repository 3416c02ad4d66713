#include "platform/scripted/keys/recording_event_poster.h"

namespace nimbletype {

std::string RecordingEventPoster::text() const {
  std::string result;
  for (const Posted& event : posted) {
    if (const auto* chunk = std::get_if<std::u16string>(&event)) {
      result += text::toUtf8(*chunk);
    } else if (std::get<KeyCombo>(event) == KeyCombo{key::space, {}}) {
      result += ' ';
    } else if (std::get<KeyCombo>(event) == KeyCombo{key::deleteBack, {}}) {
      result.resize(result.size() - text::lastCharacter(result).size());
    }
  }
  return result;
}

}  // namespace nimbletype
