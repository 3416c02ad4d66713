#pragma once
#include <string>
#include <vector>

namespace nimbletype::cli {

// The state of one thing the application uses.
struct Finding {
  std::string name;
  std::string state;   // what was found, in a few words
  std::string advice;  // what to do; empty when all is well
  bool works = true;
  bool needed = false;  // the main job cannot run without it
};

// Looks at everything the desktop lends the application. Takes a second or two, changes nothing.
std::vector<Finding> desktopFindings();

// One screen for people.
std::string report(const std::vector<Finding>& findings);
// 1 when the main job could not run.
int exitStatus(const std::vector<Finding>& findings);

}  // namespace nimbletype::cli
