#include "tools/stage/scene/trace_log.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <nlohmann/json.hpp>
#include <sstream>

namespace nimbletype {

void TraceLog::readOn() {
  if (!file_.is_open()) file_.open(path_);
  if (!file_.is_open()) return;
  file_.clear();
  rest_.append(std::istreambuf_iterator<char>(file_), {});
  std::size_t start = 0;
  for (auto end = rest_.find('\n'); end != std::string::npos; end = rest_.find('\n', start)) {
    take(rest_.substr(start, end - start));
    start = end + 1;
  }
  rest_.erase(0, start);
}

void TraceLog::take(const std::string& line) {
  std::istringstream words(line);
  long long microseconds = 0;
  TraceEntry entry;
  words >> microseconds >> entry.stage;
  entry.at = Clock::time_point(std::chrono::microseconds(microseconds));
  if (entry.stage == "suggestion") {
    const auto value = nlohmann::json::parse(words, nullptr, false);
    if (value.is_object()) lastSuggestion_ = OfferedText{value.value("before", ""), value.value("text", "")};
  }
  if (entry.stage == "status") std::getline(words >> std::ws, lastStatus_);
  entries_.push_back(std::move(entry));
}

bool TraceLog::has(const std::string& stage) {
  readOn();
  return std::any_of(entries_.begin(), entries_.end(),
                     [&](const auto& entry) { return entry.stage == stage; });
}

std::string TraceLog::lastSteps() const {
  constexpr std::size_t most = 20;
  std::string steps;
  for (std::size_t i = entries_.size() - std::min(most, entries_.size()); i < entries_.size(); ++i) {
    const double since = i == 0 ? 0 : millisecondsBetween(entries_[i - 1].at, entries_[i].at);
    steps += " +" + std::to_string(std::lround(since)) + " ms " + entries_[i].stage;
  }
  return steps;
}

}  // namespace nimbletype
