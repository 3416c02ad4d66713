#pragma once
#include <cstdio>
#include <memory>

#include "core/completion/completion_engine.h"

namespace nimbletype {

// Writes when the engine reached which step to a file, one line each: microseconds of the monotonic clock, a
// blank, the step. A new suggestion is written as "suggestion {"before": ..., "text": ...}", a new status as
// "status" and its sentence. For measuring and demonstrating the road from key press to ghost from outside;
// the file holds what the user types.
class StageTrace {
 public:
  StageTrace(const char* path, CompletionEngine& engine, MainLoop& loop);
  StageTrace(const StageTrace&) = delete;
  StageTrace& operator=(const StageTrace&) = delete;

 private:
  void reached(CompletionEngine::Stage stage);
  void write(const std::string& what);

  std::unique_ptr<std::FILE, int (*)(std::FILE*)> file_;
  CompletionEngine& engine_;
  MainLoop& loop_;
  bool asked_ = false;  // since the last new suggestion
  Task suggestion_, status_;
};

}  // namespace nimbletype
