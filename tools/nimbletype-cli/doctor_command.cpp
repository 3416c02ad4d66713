#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <optional>

#include "cli.h"
#include "engines/builtin_provider.h"
#include "health.h"
#include "waiting_loop.h"

namespace nimbletype::cli {
namespace {

constexpr const char* help = R"(usage: nimbletype-cli doctor [--model FILE]

Shows the state of everything the application needs, each with what to do about it. The model is that of --model or
$NIMBLETYPE_MODEL.

Exit status: 0; 1 when the application could not do its main job here; 2 for wrong arguments.
)";

class SilentLog : public SystemLog {
  void log(std::string_view, std::string_view) override {}
};

// Loads the model and evaluates a few words: the only proof that it works.
Finding modelFinding(const std::optional<std::string>& path) {
  Finding finding{"Engine and model", "", "", true, true};
  WaitingLoop loop;
  SilentLog log;
  NamedModel model(path);
  const auto provider = makeBuiltInProvider(loop, model, log);
  CompletionRequest request;
  request.rawPrompt = "Thank you for your";
  request.maxTokens = 1;
  std::optional<CompletionResult> result;
  const Task running =
      provider->complete(request, {}, [&](CompletionResult answer) { result = std::move(answer); });
  loop.runUntil([&] { return result.has_value(); });
  if (*result) {
    finding.state = "built in, " + path.value_or("downloaded model") + " loads and answers";
    return finding;
  }
  finding.works = false;
  finding.state = "built in, " + (path ? *path + ": " : std::string()) + result->error().message;
  finding.advice =
      path ? "Name a whole GGUF file of a known architecture with --model or NIMBLETYPE_MODEL."
           : "Name a GGUF file with --model or NIMBLETYPE_MODEL, such as models/starter/starter-q8_0.gguf.";
  return finding;
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
  if (arguments.size() == 1 && arguments[0] == "--help") return std::fputs(help, stdout), 0;
  std::optional<std::string> model;
  if (const char* path = std::getenv("NIMBLETYPE_MODEL"); path && *path) model = path;
  if (arguments.size() == 2 && arguments[0] == "--model")
    model = arguments[1];
  else if (!arguments.empty())
    return std::fputs(help, stderr), 2;
  std::vector<Finding> findings{modelFinding(model)};
  for (Finding& finding : desktopFindings()) findings.push_back(std::move(finding));
  std::fputs(report(findings).c_str(), stdout);
  const int status = exitStatus(findings);
  std::puts(status == 0 ? "\nNimbletype can do its job here." : "\nNimbletype cannot do its job here yet.");
  return status;
}

}  // namespace nimbletype::cli
