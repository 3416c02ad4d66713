#pragma once
#include "tools/stage/scene/child_process.h"
#include "tools/stage/scene/editor_programs.h"

namespace nimbletype {

// How a program is to draw itself.
struct EditorLook {
  bool dark = false;
  int scale = 1;  // pixels of the screen for one of its own
};

// The start of the program with that look. Called after startOf(), which writes its files to `folder`.
ChildProcess::Start dressed(ChildProcess::Start start, const EditorProgram& editor, const EditorLook& look,
                            const std::filesystem::path& folder);

}  // namespace nimbletype
