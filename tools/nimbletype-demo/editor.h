#pragma once
#include <filesystem>
#include <string>

#include "platform/linux/atspi_accessibility.h"
#include "tools/nimbletype-demo/child_process.h"
#include "tools/nimbletype-demo/desktop_windows.h"

namespace nimbletype {

// A text editor with an empty file, ready to be typed into, and what stands in it as Accessibility tells.
class Editor {
 public:
  // Files and settings go to `folder`; throws for a program this does not know how to start.
  Editor(const std::string& program, const std::filesystem::path& folder, const DesktopWindows& windows);

  std::string text();
  // The window with its frame, as a picture.
  QImage picture() const;
  QPoint corner() const;  // of that picture on the screen
  pid_t processID() const { return process_.processID(); }

 private:
  ObjectRef focusedField();
  void awaitWindow();

  const DesktopWindows& windows_;
  std::string program_;
  AtspiAccessibility accessibility_;
  ChildProcess process_;
  xcb_window_t window_ = XCB_WINDOW_NONE;
  ObjectRef field_;
};

}  // namespace nimbletype
