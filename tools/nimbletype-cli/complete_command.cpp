#include <cstdio>
#include <nlohmann/json.hpp>
#include <optional>

#include "cli.h"
#include "core/completion/asking/request_builder.h"
#include "core/completion/offers/alternatives_session.h"
#include "core/prompt/reply_cleaning.h"
#include "engine_choice.h"
#include "text/text.h"

namespace nimbletype::cli {
namespace {

constexpr const char* help = R"(usage: nimbletype-cli complete [options] TEXT

Writes one suggestion for a caret at the end of TEXT, cleaned as the application would show it.

  --engine KIND     builtIn, apple, ollama or openAI (default: the one in the settings)
  --model MODEL     of the built-in engine a GGUF file (default: $NIMBLETYPE_MODEL, then the downloaded one),
                    of a server the model's name (default: the one in the settings)
  --url ADDRESS     of the server (default: the one in the settings)
  --length LENGTH   short, medium (default) or long
  --others          other suggestions instead, as their list shows them: one a line
  --json            also timings in milliseconds, token counts and both prompts

Exit status: 0, also when there is nothing to suggest; 1 when the engine failed; 2 for wrong arguments.
)";

struct Options {
  EngineOptions engine;
  std::optional<std::string> text;
  CompletionLength length = CompletionLength::medium;
  bool json = false, help = false, others = false;
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
    if (const auto taken = options.engine.take(arguments, i); taken.taken) {
      if (!taken.complaint.empty()) return complain(taken.complaint), std::nullopt;
      continue;
    }
    if (argument == "--length" && i + 1 == arguments.size())
      return complain(argument + " needs a value"), std::nullopt;
    if (argument == "--json")
      options.json = true;
    else if (argument == "--help")
      options.help = true;
    else if (argument == "--others")
      options.others = true;
    else if (argument == "--length") {
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
  return options;
}

CompletionRequest requestFor(const Options& options, const Engines& engines, int words) {
  const std::string before = text::repaired(*options.text);
  return makeRequest({{},
                      before,
                      before,
                      words,
                      engines.prefs().creativity.get(),
                      modelFor(engines.chosen(), engines.prefs(), false)});
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

int printOthers(const Options& options, const Engines& engines, CompletionProvider& provider) {
  const int words = wordBudget(options.length);
  const std::string before = text::repaired(*options.text);
  auto replies =
      engines.alternatives(provider, requestFor(options, engines, words), AlternativesSession::asked);
  if (!replies) return std::fprintf(stderr, "%s\n", replies.error().message.c_str()), 1;
  for (std::string& reply : *replies) reply = cleanReply(reply, {before, words, provider.promptStyle(), {}});
  for (const std::string& each : differentOnes(*replies))
    std::printf("%s\n", rowText(each, wordPrefixOf(before)).c_str());
  return 0;
}

}  // namespace

int complete(Arguments arguments) {
  const auto options = parse(arguments);
  if (!options) return 2;
  if (options->help) return std::fputs(help, stdout), 0;
  if (!options->text) return complain("no text was given (see --help)");
  const int words = wordBudget(options->length);
  const auto desktop = makeDesktop();
  const Engines engines(*desktop, options->engine);
  CompletionProvider& provider = *engines.hub().writer(engines.chosen());
  if (options->others) return printOthers(*options, engines, provider);
  const CompletionRequest request = requestFor(*options, engines, words);
  const CompletionResult result = engines.complete(provider, request);
  if (!result) return std::fprintf(stderr, "%s\n", result.error().message.c_str()), 1;
  const std::string suggestion =
      cleanReply(result->text, {text::repaired(*options->text), words, provider.promptStyle(), {}});
  if (options->json)
    printJson(*result, request, suggestion);
  else
    std::printf("%s\n", suggestion.c_str());
  return 0;
}

}  // namespace nimbletype::cli
