#pragma once
#include <fstream>
#include <memory>
#include <string>

#include "platform/linux/accessibility/atspi_accessibility.h"
#include "tools/stage/desktop_session.h"
#include "tools/stage/waiting.h"

namespace nimbletype {

// A text editor on the private desktop with a file of this content open.
class OpenEditor {
 public:
  OpenEditor(const std::string& program, const std::string& content) {
    if (!DesktopSession::start()) return;
    // A file of its own: editors come back to where the caret was.
    static int opened = 0;
    const std::string path = std::string(getenv("HOME")) + "/" + program + std::to_string(++opened) + ".txt";
    std::ofstream(path) << content;
    program_ = std::make_unique<DesktopProgram>(std::vector<std::string>{program, path});
  }
  std::int64_t processID() const { return program_ ? program_->processID() : 0; }

 private:
  std::unique_ptr<DesktopProgram> program_;
};

}  // namespace nimbletype
