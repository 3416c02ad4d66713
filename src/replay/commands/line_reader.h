#pragma once
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/desktop/geometry.h"
#include "replay/desktop/replay_output.h"

namespace nimbletype {

// What is wrong with a line, as the end of a sentence. Never leaves the replay.
struct LineError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// Reads one line's fields, each of one type; a value of another type is a LineError. `null` and a missing
// field are told apart where that matters.
class LineReader {
 public:
  explicit LineReader(const Json& line) : line_(line) {}

  bool has(const char* name) { return seen(name), line_.contains(name); }
  bool isNull(const char* name) { return has(name) && line_.at(name).is_null(); }
  const Json& json(const char* name);  // required
  std::optional<bool> boolean(const char* name);
  std::optional<std::int64_t> integer(const char* name, std::int64_t least = 0);
  std::optional<double> number(const char* name);
  std::optional<std::string> text(const char* name);
  std::optional<std::vector<std::string>> texts(const char* name);
  std::optional<TopLeftRect> rect(const char* name);
  std::string requiredText(const char* name);
  std::int64_t requiredInteger(const char* name);
  // The fields that nobody asked for.
  std::vector<std::string> unread() const;

 private:
  const Json* value(const char* name, const char* type, bool (Json::*isOfType)() const noexcept);
  void seen(const char* name) { seen_.insert(name); }

  const Json& line_;
  std::set<std::string> seen_{"t"};
};

}  // namespace nimbletype
