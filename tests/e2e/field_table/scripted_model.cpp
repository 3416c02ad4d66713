#include "tests/e2e/field_table/scripted_model.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace nimbletype {

// One answer serves both questions: which models there are, and what comes next.
void ScriptedModel::willSay(const std::string& continuation) {
  const nlohmann::json reply{{"data", {{{"id", "scripted"}}}}, {"choices", {{{"text", continuation}}}}};
  server_.willAlwaysAnswer({httpAnswer(200, reply.dump())});
}

std::string ScriptedModel::settings() const {
  return R"("engine":"openAI","serverModel":"scripted","serverURL":")" + server_.url("/v1") + '"';
}

bool ScriptedModel::wasTold(const std::string& text) const {
  const auto received = server_.received();
  return std::ranges::any_of(
      received, [&](const auto& request) { return request.body.find(text) != std::string::npos; });
}

}  // namespace nimbletype
