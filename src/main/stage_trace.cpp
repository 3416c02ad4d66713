#include "main/stage_trace.h"

#include <nlohmann/json.hpp>

namespace nimbletype {
namespace {

const char* name(CompletionEngine::Stage stage) {
  constexpr const char* names[] = {"fieldChanged", "requested", "firstText", "shown"};
  return names[static_cast<std::size_t>(stage)];
}

std::string described(const std::string& before, const std::string& text) {
  return nlohmann::json{{"before", before}, {"text", text}}.dump(-1, ' ', false,
                                                                 nlohmann::json::error_handler_t::replace);
}

}  // namespace

StageTrace::StageTrace(const char* path, CompletionEngine& engine, MainLoop& loop)
    : file_(std::fopen(path, "w"), std::fclose), engine_(engine), loop_(loop) {
  if (!file_) return;
  std::setvbuf(file_.get(), nullptr, _IOLBF, 0);
  engine.onStage([this](CompletionEngine::Stage stage) { reached(stage); });
  status_ = engine.status().observe([this] { write("status " + engine_.status().get().label()); });
}

void StageTrace::reached(CompletionEngine::Stage stage) {
  write(name(stage));
  if (stage == CompletionEngine::Stage::requested) asked_ = true;
  if (stage != CompletionEngine::Stage::shown || !std::exchange(asked_, false) || !engine_.snapshot().get())
    return;
  // The engine names the suggestion as its last one once it is on screen.
  suggestion_ = loop_.after(Milliseconds{0}, [this, before = engine_.snapshot().get()->before] {
    write("suggestion " + described(before, engine_.lastSuggestion().get()));
  });
}

void StageTrace::write(const std::string& what) {
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  std::fprintf(file_.get(), "%lld %s\n",
               static_cast<long long>(std::chrono::duration_cast<std::chrono::microseconds>(now).count()),
               what.c_str());
}

}  // namespace nimbletype
