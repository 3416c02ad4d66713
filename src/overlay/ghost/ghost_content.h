#pragma once
#include <optional>
#include <string>

#include "platform/desktop/geometry.h"

namespace nimbletype {

// One suggestion as handed to the overlay. Screen points, origin at the bottom left of the main screen.
struct GhostContent {
  enum class Kind { completion, correction };
  Kind kind = Kind::completion;
  std::string text;
  BottomLeftRect caretRect;
  std::optional<double> lineStartX;
  std::string lineText;  // what stands between lineStartX and the caret, where known
  std::optional<BottomLeftRect> fieldFrame;
  double fontSize = 13;  // of the field's text; points of the overlay space, see FontSpec
  double textScale = 1;  // how much larger than the field's text the suggestion is to be
  std::optional<std::string> fontName;
  bool allowWrap = true;
  bool hint = false;
  std::string hintLabel;  // what the keycap says: the name of a key that takes the suggestion
  bool tinted = false;
  double verticalNudge = 0;
  bool anchored = false;
  bool operator==(const GhostContent&) const = default;
};

// Where suggestions are drawn; the ghost panel on a desktop.
class GhostPresenter {
 public:
  virtual ~GhostPresenter() = default;
  // Content equal to what is on screen changes nothing.
  virtual void present(const GhostContent& content) = 0;
  virtual void hide() = 0;
};

}  // namespace nimbletype
