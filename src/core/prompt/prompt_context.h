#pragma once
#include <string>
#include <vector>

namespace nimbletype {

// Everything gathered for one prompt; a part is empty when its setting is off or nothing was found.
struct PromptContext {
  std::string appName;
  std::string windowTitle;
  std::string domain;
  std::string clipboard;
  std::string screenText;  // the lines closest to the caret, in reading order
  std::string nearbyText;
  std::string aboutWriter;
  std::vector<std::string> examples;
  std::string recentText;
  std::string writerName;
  std::string now;
  bool operator==(const PromptContext&) const = default;
};

}  // namespace nimbletype
