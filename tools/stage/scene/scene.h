#pragma once
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "tools/stage/scene/child_process.h"
#include "tools/stage/scene/editor.h"
#include "tools/stage/scene/ghost_window.h"
#include "tools/stage/scene/trace_log.h"
#include "tools/stage/servers/llama_server.h"
#include "tools/stage/user_keyboard.h"

namespace nimbletype {

// An empty folder that goes with this object.
class ScratchFolder {
 public:
  ScratchFolder();
  ~ScratchFolder();
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;
  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

// The real application beside a real editor, and a user at the keyboard.
class Scene {
 public:
  struct Cast {
    // No model, no engine: as the application has it.
    std::string application, model, editor, engine = {};
    // The program that serves the model, where the engine is not the application's own.
    std::string server = {};
    std::string settings = {};  // JSON, on top of those of the demo
    EditorLook look = {};
  };
  explicit Scene(Cast cast);

  // Starts the application, anew if it runs, and returns once it follows the editor's field: how long it took
  // to be ready.
  std::chrono::milliseconds startApplication();

  // Types like a person: one key, then a rest.
  void typeKey(char character, std::chrono::milliseconds restAfter);
  void typeSlowly(const std::string& text);
  // Types sentence after sentence, each on a line of its own, until a ghost of at least two words stands
  // after one. Throws when none does; `tellSkipped` hears of those without.
  std::string typeUntilGhost(const std::function<void(const std::string& sentence)>& tellSkipped);

  // The text of the ghost on screen that has not been typed or taken yet; none when there is no ghost.
  std::optional<std::string> offered();

  UserKeyboard& user() { return user_; }
  Editor& editor() { return editor_; }
  GhostWindow& ghost() { return *ghost_; }
  const DesktopWindows& windows() const { return windows_; }
  TraceLog& trace() { return trace_; }
  ChildProcess& application() { return *application_; }
  std::string applicationLog() const;
  // Where the application keeps its files.
  std::filesystem::path dataFolder() const { return folder_.path() / "data" / "Nimbletype"; }
  // What counts from the next start of the application on.
  void setSettings(std::string json) { cast_.settings = std::move(json); }

 private:
  bool endsInGhost();
  void writeSettings() const;

  Cast cast_;
  ScratchFolder folder_;
  DesktopWindows windows_;
  UserKeyboard user_;
  Editor editor_;
  TraceLog trace_;
  std::unique_ptr<LlamaServer> server_;
  std::unique_ptr<ChildProcess> application_;
  std::unique_ptr<GhostWindow> ghost_;
};

}  // namespace nimbletype
