#include "menubar/status_icon.h"

#include "text/format/number_format.h"

namespace nimbletype {
namespace {

const char* symbolOf(Tone tone) {
  switch (tone) {
    case Tone::trouble:
      return "exclamationmark.circle.fill";
    case Tone::paused:
      return "pause.circle.fill";
    default:
      return "pencil.and.scribble";
  }
}

}  // namespace

StatusIcon statusIcon(const MenuState& state) {
  const StatusLine line = statusLine(state);
  const bool hasCount = state.showsCount && state.wordsToday >= 1;
  return {symbolOf(line.tone), hasCount ? text::formatNumber(state.wordsToday, state.locale) : "",
          "Nimbletype: " + line.text};
}

}  // namespace nimbletype
