#include <algorithm>
#include <cstdio>

#include "cli.h"
#include "core/completion/asking/request_builder.h"
#include "core/prompt/prompt_builder.h"
#include "engine_choice.h"
#include "engines/address/server_address.h"
#include "health.h"
#include "options.h"

namespace nimbletype::cli {
namespace {

constexpr const char* help = R"(usage: nimbletype-cli doctor [options]

Shows the state of everything the application needs, each with what to do about it. The engine in use has to write a
word; the others are asked how they are.

  --engine KIND     look at this engine as if it were the one in the settings
  --model MODEL     with this GGUF file (default: $NIMBLETYPE_MODEL, then the downloaded one) or server's model
  --url ADDRESS     with this server

Exit status: 0; 1 when the application could not do its main job here; 2 for wrong arguments.
)";

std::string advice(const Engines& engines, EngineKind kind) {
  switch (kind) {
    case EngineKind::builtIn:
      if (engines.modelFile()) return "Name a whole GGUF file of a known architecture with --model.";
      return "Fetch the model with nimbletype-cli download, or name a GGUF file with --model, such as "
             "models/starter/starter-q8_0.gguf.";
    case EngineKind::apple:
      return "Choose another engine.";
    case EngineKind::ollama:
    case EngineKind::openAI:
      return "Start the server, and choose one of the models that nimbletype-cli models shows.";
  }
  return {};
}

// Writing a word is the only proof that an engine works.
Finding chosenFinding(const Engines& engines) {
  const EngineKind kind = engines.chosen();
  Finding finding{"Engine: " + std::string(displayName(kind)), "", "", true, true};
  CompletionProvider& writer = *engines.hub().writer(kind);
  CompletionRequest request;
  request.rawPrompt = request.prompt = "Thank you for your";
  request.instructions = systemPrompt(1);
  request.maxTokens = 1;
  request.model = modelFor(kind, engines.prefs(), false);
  const CompletionResult result = engines.complete(writer, request);
  finding.state = engines.status(*engines.hub().provider(kind)).label();
  if (const auto file = engines.modelFile(); file && kind == EngineKind::builtIn) finding.state = *file;
  finding.state += result ? ", and it writes" : ": " + result.error().message;
  finding.works = result.has_value();
  if (!finding.works) finding.advice = advice(engines, kind);
  return finding;
}

std::vector<Finding> engineFindings(const EngineOptions& options) {
  const auto desktop = makeDesktop();
  const Engines engines(*desktop, options);
  std::vector<Finding> findings{chosenFinding(engines)};
  if (const std::string warning = serverWarning(engines.address(engines.chosen()));
      usesServer(engines.chosen()) && !warning.empty())
    findings.front().advice = warning;
  for (EngineKind kind : {EngineKind::builtIn, EngineKind::apple, EngineKind::ollama, EngineKind::openAI}) {
    if (kind == engines.chosen()) continue;
    const ProviderStatus status = engines.status(*engines.hub().provider(kind));
    findings.push_back(
        {"Engine: " + std::string(displayName(kind)), status.label(), "", !status.isProblem(), false});
  }
  return findings;
}

}  // namespace

std::string report(const std::vector<Finding>& findings) {
  std::size_t width = 0;
  for (const Finding& finding : findings) width = std::max(width, finding.name.size());
  std::string text;
  for (const Finding& finding : findings) {
    const char* mark = finding.works ? "ok      " : finding.needed ? "PROBLEM " : "missing ";
    text += mark + finding.name + std::string(width - finding.name.size() + 2, ' ') + finding.state + '\n';
    if (!finding.advice.empty()) text += std::string(width + 10, ' ') + "→ " + finding.advice + '\n';
  }
  return text;
}

int exitStatus(const std::vector<Finding>& findings) {
  return std::any_of(findings.begin(), findings.end(), [](const Finding& f) { return f.needed && !f.works; });
}

int doctor(Arguments arguments) {
  EngineOptions engine;
  Options options("doctor", help);
  engine.addTo(options);
  if (const auto status = options.read(arguments)) return *status;
  std::vector<Finding> findings = engineFindings(engine);
  for (Finding& finding : desktopFindings()) findings.push_back(std::move(finding));
  std::fputs(report(findings).c_str(), stdout);
  const int status = exitStatus(findings);
  std::puts(status == 0 ? "\nNimbletype can do its job here." : "\nNimbletype cannot do its job here yet.");
  return status;
}

}  // namespace nimbletype::cli
