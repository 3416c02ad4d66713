#pragma once
#include <nlohmann/json.hpp>
#include <ostream>

#include "platform/scripted/system/virtual_main_loop.h"

namespace nimbletype {

using Json = nlohmann::ordered_json;

// Writes what was noticed: one JSON object a line, each with the virtual time and its kind first.
class ReplayOutput {
 public:
  ReplayOutput(std::ostream& stream, const VirtualMainLoop& loop) : stream_(stream), loop_(loop) {}
  // `fields` is an object; its keys follow in their order.
  void print(std::string_view kind, const Json& fields);
  // Nothing more is printed: what ends with the desktop is no one's doing.
  void close() { closed_ = true; }

 private:
  std::ostream& stream_;
  const VirtualMainLoop& loop_;
  bool closed_ = false;
};

}  // namespace nimbletype
