#pragma once
#include <cstdio>
#include <memory>

#include "core/completion/completion_engine.h"

namespace nimbletype {

// Writes when the engine reached which step to a file, one line each: microseconds of the monotonic clock, a
// blank, the step. For measuring the road from key press to ghost from outside.
class StageTrace {
 public:
  StageTrace(const char* path, CompletionEngine& engine);

 private:
  std::unique_ptr<std::FILE, int (*)(std::FILE*)> file_;
};

}  // namespace nimbletype
