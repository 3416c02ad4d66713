#pragma once
#include <QProcess>
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

  QProcess process_;
};

}  // namespace nimbletype
