#include <cstdio>
#include <cstdlib>
#include <nlohmann/json.hpp>
#include <optional>

#include "cli.h"
#include "core/completion/request_builder.h"
#include "core/prompt/reply_cleaning.h"
#include "engines/builtin_provider.h"
#include "platform/scripted/memory_defaults_store.h"
#include "text/text.h"
#include "waiting_loop.h"

namespace nimbletype::cli {
namespace {

constexpr const char* help = R"(usage: nimbletype-cli complete [options] TEXT

Writes one suggestion for a caret at the end of TEXT, cleaned as the application would show it.

  --model FILE      the model of the built-in engine, a GGUF file (default: $NIMBLETYPE_MODEL)
  --engine KIND     builtIn
  --length LENGTH   short, medium (default) or long
  --json            also timings in milliseconds, token counts and both prompts

Exit status: 0, also when there is nothing to suggest; 1 when the engine failed; 2 for wrong arguments.
)";

struct Options {
  std::optional<std::string> model, text;
  EngineKind engine = EngineKind::builtIn;
  CompletionLength length = CompletionLength::medium;
  bool json = false, help = false;
};

int complain(const std::string& sentence) {
  std::fprintf(stderr, "nimbletype-cli complete: %s\n", sentence.c_str());
  return 2;
}

// None, with the sentence already written, when the arguments make no sense.
std::optional<Options> parse(Arguments arguments) {
  Options options;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& argument = arguments[i];
    const bool takesValue = argument == "--model" || argument == "--engine" || argument == "--length";
    if (takesValue && i + 1 == arguments.size()) return complain(argument + " needs a value"), std::nullopt;
    if (argument == "--json")
      options.json = true;
    else if (argument == "--help")
      options.help = true;
    else if (argument == "--model")
      options.model = arguments[++i];
    else if (argument == "--engine") {
      const auto kind = fromRawValue<EngineKind>(arguments[++i]);
      if (kind != EngineKind::builtIn)
        return complain("\"" + arguments[i] + "\" is no engine of this version; there is builtIn"),
               std::nullopt;
    } else if (argument == "--length") {
      const auto length = fromRawValue<CompletionLength>(arguments[++i]);
      if (!length)
        return complain("\"" + arguments[i] + "\" is no length; there are short, medium and long"),
               std::nullopt;
      options.length = *length;
    } else if (argument.starts_with("--") && argument.size() > 2) {
      return complain("there is no option " + argument), std::nullopt;
    } else if (argument != "--" && options.text) {
      return complain("put the text in quotes: only one is taken"), std::nullopt;
    } else if (argument != "--") {
      options.text = argument;
    }
  }
  if (const char* model = std::getenv("NIMBLETYPE_MODEL"); !options.model && model && *model)
    options.model = model;
  return options;
}

class SilentLog : public SystemLog {
  void log(std::string_view, std::string_view) override {}
};

CompletionRequest requestFor(const Options& options, int words) {
  MemoryDefaultsStore noSettings;
  const Preferences prefs(noSettings);
  const std::string before = text::repaired(*options.text);
  return makeRequest({{}, before, before, words, prefs.creativity.get(), {}});
}

void printJson(const Completion& completion, const CompletionRequest& request,
               const std::string& suggestion) {
  const CompletionCost& cost = completion.cost;
  const nlohmann::ordered_json report{
      {"suggestion", suggestion},
      {"reply", completion.text},
      {"milliseconds", {{"prompt", cost.promptMilliseconds}, {"generation", cost.generationMilliseconds}}},
      {"tokens",
       {{"prompt", cost.promptTokens}, {"reused", cost.reusedTokens}, {"generated", cost.generatedTokens}}},
      {"rawPrompt", request.rawPrompt},
      {"instructions", request.instructions},
      {"prompt", request.prompt}};
  std::printf("%s\n", report.dump(2, ' ', false, nlohmann::json::error_handler_t::replace).c_str());
}

}  // namespace

int complete(Arguments arguments) {
  const auto options = parse(arguments);
  if (!options) return 2;
  if (options->help) return std::fputs(help, stdout), 0;
  if (!options->text) return complain("no text was given (see --help)");
  const int words = wordBudget(options->length);
  const CompletionRequest request = requestFor(*options, words);

  WaitingLoop loop;
  SilentLog log;
  NamedModel model(options->model);
  const auto provider = makeBuiltInProvider(loop, model, log);
  std::optional<CompletionResult> result;
  const Task running =
      provider->complete(request, {}, [&](CompletionResult answer) { result = std::move(answer); });
  loop.runUntil([&] { return result.has_value(); });
  if (!*result) return std::fprintf(stderr, "%s\n", result->error().message.c_str()), 1;
  const std::string suggestion =
      cleanReply((*result)->text, {text::repaired(*options->text), words, provider->promptStyle(), {}});
  if (options->json)
    printJson(**result, request, suggestion);
  else
    std::printf("%s\n", suggestion.c_str());
  return 0;
}

}  // namespace nimbletype::cli
