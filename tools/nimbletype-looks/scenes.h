#pragma once
#include <span>

#include "tools/stage/scene/editor_look.h"

namespace nimbletype {

// A text in a window of a real application, and the suggestion for it.
struct PhotoScene {
  const char* name = "";          // of the picture
  const char* editor = "";        // an EditorProgram's
  int width = 560, height = 150;  // of the window, in its own pixels
  const char* text = "";
  const char* suggestion = "";  // empty: whatever the application itself offers
  const char* settings = "";    // JSON members, on top of those of all scenes
  EditorLook look = {};
  // Opened with the key for other suggestions, one a line; in place of a suggestion.
  const char* others = "";
  int linesBefore = 0;  // typed before the text, to fill the field
  int x = 60, y = 60;   // of the window on the screen, in pixels
  int screens = 1;      // that the desktop needs, side by side
};

std::span<const PhotoScene> photoScenes();

}  // namespace nimbletype
