#include "app/stage_trace.h"

namespace nimbletype {
namespace {

const char* name(CompletionEngine::Stage stage) {
  constexpr const char* names[] = {"fieldChanged", "requested", "firstText", "shown"};
  return names[static_cast<std::size_t>(stage)];
}

}  // namespace

StageTrace::StageTrace(const char* path, CompletionEngine& engine)
    : file_(std::fopen(path, "w"), std::fclose) {
  if (!file_) return;
  std::setvbuf(file_.get(), nullptr, _IOLBF, 0);
  engine.onStage([this](CompletionEngine::Stage stage) {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    std::fprintf(file_.get(), "%lld %s\n",
                 static_cast<long long>(std::chrono::duration_cast<std::chrono::microseconds>(now).count()),
                 name(stage));
  });
}

}  // namespace nimbletype
