#pragma once
#include <filesystem>
#include <string>

#include "platform/linux/accessibility/atspi_accessibility.h"
#include "tools/stage/scene/desktop_windows.h"
#include "tools/stage/scene/editor_look.h"

namespace nimbletype {

// Pages end a line with a blank that does not vanish there; this makes it an ordinary one.
std::string withPlainBlanks(std::string text);

// A text field of a real application, empty and ready to be typed into, and what stands in it as
// Accessibility tells.
class Editor {
 public:
  // Files and settings go to `folder`; throws for a program this does not know how to start.
  Editor(const std::string& name, const std::filesystem::path& folder, const DesktopWindows& windows,
         const EditorLook& look = {});

  std::string text();  // with plain blanks
  // Where text would be typed at the end, as the application says, or as its picture shows where it does not.
  std::optional<TopLeftRect> caret();
  // Whether what is typed there would stand left of it.
  bool continuesToTheLeft();
  // The window with its frame, as a picture.
  QImage picture() const;
  QPoint corner() const;  // of that picture on the screen
  const EditorProgram& program() const { return program_; }
  pid_t processID() const { return process_.processID(); }
  void resize(QSize size);
  void moveTo(QPoint corner);  // of the window within its frame
  // For applications that replace a field by another one as it is typed into.
  bool findField();

 private:
  ObjectRef focusedField();
  AttributeValue read(const ObjectRef& element, AttributeRead read);
  void awaitWindow();
  std::optional<TopLeftRect> boxOf(TextRange range);
  std::optional<TopLeftRect> caretInPicture();

  const DesktopWindows& windows_;
  EditorProgram program_;
  AtspiAccessibility accessibility_;
  ChildProcess process_;
  xcb_window_t window_ = XCB_WINDOW_NONE;
  ObjectRef field_;
};

}  // namespace nimbletype
