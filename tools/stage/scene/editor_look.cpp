#include "tools/stage/scene/editor_look.h"

#include <fstream>

namespace nimbletype {
namespace {

namespace fs = std::filesystem;

void appendTo(const fs::path& file, const std::string& text) {
  fs::create_directories(file.parent_path());
  std::ofstream(file, std::ios::app) << text;
}

void darken(ChildProcess::Start& start, const EditorProgram& editor, const fs::path& folder) {
  start.environment["GTK_THEME"] = "Adwaita:dark";
  if (editor.name == "featherpad")
    appendTo(folder / "editor-home/.config/featherpad/fp.conf", "[text]\ndarkColorScheme=true\n");
  if (editor.hasPages)
    appendTo(folder / "letter.txt.html",
             "<style>:root{color-scheme:dark}body,textarea{background:#1e1e20;color:#e8e8e8}</style>");
}

}  // namespace

ChildProcess::Start dressed(ChildProcess::Start start, const EditorProgram& editor, const EditorLook& look,
                            const fs::path& folder) {
  if (look.dark) darken(start, editor, folder);
  if (look.scale == 1) return start;
  const std::string scale = std::to_string(look.scale);
  start.environment["GDK_SCALE"] = scale;
  start.environment["QT_SCALE_FACTOR"] = scale;
  if (editor.hasPages) start.command.push_back("--force-device-scale-factor=" + scale);
  return start;
}

}  // namespace nimbletype
