#pragma once
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include "tools/stage/waiting.h"

namespace nimbletype {

// One line that the application wrote with NIMBLETYPE_TRACE.
struct TraceEntry {
  Clock::time_point at;
  std::string stage;
};

// A suggestion and the text it was made for.
struct OfferedText {
  std::string before, text;
};

// What the application wrote so far. It may still be writing.
class TraceLog {
 public:
  explicit TraceLog(std::string path) : path_(std::move(path)) {}

  void readOn();
  const std::vector<TraceEntry>& entries() const { return entries_; }
  const std::optional<OfferedText>& lastSuggestion() const { return lastSuggestion_; }
  // The sentence of the latest status; empty before the first.
  const std::string& lastStatus() const { return lastStatus_; }
  bool has(const std::string& stage);
  // The latest entries with the milliseconds between them.
  std::string lastSteps() const;

 private:
  void take(const std::string& line);

  std::string path_, rest_, lastStatus_;
  std::ifstream file_;
  std::vector<TraceEntry> entries_;
  std::optional<OfferedText> lastSuggestion_;
};

}  // namespace nimbletype
