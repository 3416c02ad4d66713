#include "core/completion/showing/ghost_builder.h"

#include <string_view>

namespace nimbletype {
namespace {

// A line is about this much higher than the size of its font, where the field does not report the size.
constexpr double lineToFontSize = 0.75;

bool isSingleLine(const FieldSnapshot& snapshot) {
  return snapshot.role == "AXTextField" || snapshot.role == "AXSearchField" || snapshot.role == "AXComboBox";
}

// A line that is longer than what was read, or wrapped, begins elsewhere; the panel finds that its width does
// not fit.
std::string lastLine(std::string_view before) {
  const std::size_t lineBreak = before.find_last_of("\r\n");
  return std::string(lineBreak == std::string_view::npos ? before : before.substr(lineBreak + 1));
}

}  // namespace

std::optional<GhostContent> ghostContent(const FieldSnapshot& snapshot, GhostContent::Kind kind,
                                         std::string text, const Preferences& prefs,
                                         double mainScreenHeight) {
  if (!snapshot.caretRect || snapshot.caretRect->height <= 0) return std::nullopt;
  GhostContent content;
  content.kind = kind;
  content.text = std::move(text);
  content.caretRect = flipped(*snapshot.caretRect, mainScreenHeight);
  content.lineStartX = snapshot.lineStartX;
  content.lineText = lastLine(snapshot.before);
  if (snapshot.fieldFrame) content.fieldFrame = flipped(*snapshot.fieldFrame, mainScreenHeight);
  content.fontSize = snapshot.fontSize.value_or(snapshot.caretRect->height * lineToFontSize);
  content.textScale = prefs.textScale.get();
  content.fontName = snapshot.fontName;
  content.allowWrap = kind == GhostContent::Kind::completion && !isSingleLine(snapshot);
  content.tinted = prefs.ghostStyle.get() == GhostStyle::tinted;
  content.verticalNudge = prefs.verticalNudge.get();
  return content;
}

}  // namespace nimbletype
