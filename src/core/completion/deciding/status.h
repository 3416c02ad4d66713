#pragma once
#include <string>

namespace nimbletype {

// What the engine is doing, with the sentence that the menu shows for it.
struct Status {
  enum class Case { idle, waiting, thinking, showing, blocked, failed };
  Case state = Case::idle;
  std::string text;  // of `blocked` and `failed`

  static Status blocked(std::string reason) { return {Case::blocked, std::move(reason)}; }
  static Status failed(std::string message) { return {Case::failed, std::move(message)}; }
  static Status noCaret() { return failed("This app doesn't report where the caret is"); }
  std::string label() const;
  bool operator==(const Status&) const = default;
};

}  // namespace nimbletype
