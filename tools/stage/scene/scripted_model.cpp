#include "tools/stage/scene/scripted_model.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace nimbletype {

namespace {

// One answer serves all questions: which server it is, which models there are, and what comes next.
LoopbackServer::Answer saying(const std::string& continuation) {
  const nlohmann::json reply{
      {"version", "1.0"}, {"models", {{{"name", "scripted"}}}}, {"response", continuation}, {"done", true}};
  return {httpAnswer(200, reply.dump())};
}

}  // namespace

void ScriptedModel::willSay(const std::string& continuation) {
  server_.willAlwaysAnswer(saying(continuation));
}

void ScriptedModel::willSayOnce(const std::string& continuation) {
  server_.willAnswer(saying(continuation));
}

std::string ScriptedModel::settings() const {
  return R"("engine":"ollama","ollamaModel":"scripted","ollamaURL":")" + server_.url("") + '"';
}

bool ScriptedModel::wasTold(const std::string& text) const {
  const auto received = server_.received();
  return std::ranges::any_of(
      received, [&](const auto& request) { return request.body.find(text) != std::string::npos; });
}

}  // namespace nimbletype
