#pragma once
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "tools/stage/scene/child_process.h"

namespace nimbletype {

// A text field of a real application that can be opened empty.
struct EditorProgram {
  std::string name;  // "mousepad", "featherpad", "writer", "chromium" for a text area, "chromium-input" ...
  std::string program;  // what has to be installed
  std::string role;     // of the field, in the core's terms
  bool hasPages = false;
  bool holdsOneLine = false;
  bool tellsOneParagraph = false;  // of its text: that of the caret
  bool runsLeftToRight = false;    // all its lines do, whatever they say
};

// None for a name this does not know.
std::optional<EditorProgram> editorProgram(const std::string& name);
std::vector<std::string> editorNames();

// How it is started; files and settings are written into `folder`.
ChildProcess::Start startOf(const EditorProgram& editor, const std::filesystem::path& folder);

}  // namespace nimbletype
