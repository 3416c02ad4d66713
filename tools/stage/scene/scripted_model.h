#pragma once
#include <string>

#include "tools/stage/servers/loopback_server.h"

namespace nimbletype {

// A model on an Ollama server that goes on as it is told, whatever it is asked.
class ScriptedModel {
 public:
  ScriptedModel() { willSay(""); }
  void willSay(const std::string& continuation);
  // Before that, to one request.
  void willSayOnce(const std::string& continuation);
  // The settings with which the application uses it, as JSON without the outer braces.
  std::string settings() const;
  // Whether any request so far contained this.
  bool wasTold(const std::string& text) const;

 private:
  LoopbackServer server_;
};

}  // namespace nimbletype
