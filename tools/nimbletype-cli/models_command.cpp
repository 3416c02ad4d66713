#include <algorithm>
#include <cstdio>
#include <nlohmann/json.hpp>

#include "cli.h"
#include "engine_choice.h"
#include "engines/address/server_address.h"
#include "options.h"

namespace nimbletype::cli {
namespace {

constexpr const char* help = R"(usage: nimbletype-cli models [options]

Shows every engine, the state it is in and the models it offers. A star marks what is in use.

  --engine KIND     only this one: builtIn, apple, ollama or openAI
  --url ADDRESS     ask the server of that engine here
  --json            one JSON array

Exit status: 0; 1 when the engine in use has a problem; 2 for wrong arguments.
)";

struct Row {
  EngineKind kind;
  bool isChosen;
  ProviderStatus status;
  std::string address, warning;  // of engines on servers
  std::vector<std::string> models;
  std::string model;  // the one in use, of these
};

Row look(const Engines& engines, CompletionProvider& provider) {
  Row row{provider.kind(), provider.kind() == engines.chosen(), engines.status(provider), {}, {}, {}, {}};
  if (!usesServer(row.kind)) return row;
  row.address = engines.address(row.kind);
  row.warning = serverWarning(row.address);
  row.models = engines.models(provider).value_or(std::vector<std::string>{});
  row.model =
      row.kind == EngineKind::ollama ? engines.prefs().ollamaModel.get() : engines.prefs().serverModel.get();
  return row;
}

void print(const Row& row) {
  const std::string name = std::string(displayName(row.kind)) + " (" + std::string(rawValue(row.kind)) + ")";
  std::printf("%c %-28s %s\n", row.isChosen ? '*' : ' ', name.c_str(), row.status.label().c_str());
  if (!row.warning.empty()) std::printf("%31s%s\n", "", row.warning.c_str());
  for (const std::string& model : row.models)
    std::printf("%29s%c %s\n", "", model == row.model ? '*' : ' ', model.c_str());
}

nlohmann::ordered_json asJson(const Row& row) {
  nlohmann::ordered_json json{{"engine", rawValue(row.kind)},
                              {"chosen", row.isChosen},
                              {"status", row.status.label()},
                              {"problem", row.status.isProblem()}};
  if (!usesServer(row.kind)) return json;
  json.update(
      {{"address", row.address}, {"warning", row.warning}, {"model", row.model}, {"models", row.models}});
  return json;
}

}  // namespace

int models(Arguments arguments) {
  EngineOptions engine;
  bool json = false;
  Options options("models", help);
  engine.addTo(options);
  options.flag("--json", json);
  if (const auto status = options.read(arguments)) return *status;
  const auto desktop = makeDesktop();
  const Engines engines(*desktop, engine);
  auto list = nlohmann::ordered_json::array();
  bool hasProblem = false;
  for (EngineKind kind : {EngineKind::builtIn, EngineKind::apple, EngineKind::ollama, EngineKind::openAI}) {
    if (engine.engine && kind != *engine.engine) continue;
    const Row row = look(engines, *engines.hub().provider(kind));
    hasProblem |= row.isChosen && row.status.isProblem();
    if (json)
      list.push_back(asJson(row));
    else
      print(row);
  }
  if (json) std::printf("%s\n", list.dump(2, ' ', false, nlohmann::json::error_handler_t::replace).c_str());
  return hasProblem ? 1 : 0;
}

}  // namespace nimbletype::cli
