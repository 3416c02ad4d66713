#pragma once
#include <string>
#include <vector>

namespace nimbletype {

// One request to an engine, ready in both forms.
struct CompletionRequest {
  std::string instructions;
  std::string prompt;
  std::string rawPrompt;
  int maxTokens = 0;
  double temperature = 0.3;
  std::vector<std::string> stop;
  std::string model;
  // The last, unfinished word is re-generated from its start by engines that can.
  bool healLast = false;
  bool spaceTyped = false;
  bool operator==(const CompletionRequest&) const = default;
};

}  // namespace nimbletype
