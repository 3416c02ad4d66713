#pragma once
#include <QProcess>
#include <functional>
#include <map>
#include <string>

namespace nimbletype {

// Another application that copies and pastes.
class ClipboardApplication {
 public:
  using Formats = std::map<std::string, std::string>;

  explicit ClipboardApplication(const std::string& display = {});
  ~ClipboardApplication();

  void copy(const Formats& formats);
  Formats paste();
  // The same while nothing of this process's main loop runs.
  Formats pasteBesideABusyMainLoop();
  // Answers nobody until it is let go on.
  void hang(bool hangs);

 private:
  std::string command(const std::string& line);
  std::string commandWithoutMainLoop(const std::string& line);

  QProcess process_;
};

// Runs the main loop of Qt until the condition holds; false after 20 s.
bool runQtUntil(const std::function<bool()>& condition);

}  // namespace nimbletype
