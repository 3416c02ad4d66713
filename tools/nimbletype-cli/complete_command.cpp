#include <cstdio>
#include <nlohmann/json.hpp>
#include <optional>

#include "cli.h"
#include "core/completion/asking/request_builder.h"
#include "core/completion/offers/alternatives_session.h"
#include "core/prompt/reply_cleaning.h"
#include "engine_choice.h"
#include "options.h"
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

struct Order {
  EngineOptions engine;
  std::optional<std::string> text;
  CompletionLength length = CompletionLength::medium;
  bool json = false, others = false;
};

std::string takeLength(CompletionLength& length, const std::string& value) {
  const auto given = fromRawValue<CompletionLength>(value);
  if (!given) return "\"" + value + "\" is no length; there are short, medium and long";
  length = *given;
  return {};
}

CompletionRequest requestFor(const Order& order, const Engines& engines, int words) {
  const std::string before = text::repaired(*order.text);
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

int printOthers(const Order& order, const Engines& engines, CompletionProvider& provider) {
  const int words = wordBudget(order.length);
  const std::string before = text::repaired(*order.text);
  auto replies =
      engines.alternatives(provider, requestFor(order, engines, words), AlternativesSession::asked);
  if (!replies) return std::fprintf(stderr, "%s\n", replies.error().message.c_str()), 1;
  for (std::string& reply : *replies) reply = cleanReply(reply, {before, words, provider.promptStyle(), {}});
  for (const std::string& each : differentOnes(*replies))
    std::printf("%s\n", rowText(each, wordPrefixOf(before)).c_str());
  return 0;
}

}  // namespace

int complete(Arguments arguments) {
  Order order;
  Options options("complete", help);
  order.engine.addTo(options);
  options.value("--length", [&](const std::string& value) { return takeLength(order.length, value); });
  options.flag("--others", order.others);
  options.flag("--json", order.json);
  options.text(order.text, "put the text in quotes: only one is taken");
  if (const auto status = options.read(arguments)) return *status;
  if (!order.text) return options.complain("no text was given (see --help)");
  const int words = wordBudget(order.length);
  const auto desktop = makeDesktop();
  const Engines engines(*desktop, order.engine);
  CompletionProvider& provider = *engines.hub().writer(engines.chosen());
  if (order.others) return printOthers(order, engines, provider);
  const CompletionRequest request = requestFor(order, engines, words);
  const CompletionResult result = engines.complete(provider, request);
  if (!result) return std::fprintf(stderr, "%s\n", result.error().message.c_str()), 1;
  const std::string suggestion =
      cleanReply(result->text, {text::repaired(*order.text), words, provider.promptStyle(), {}});
  if (order.json)
    printJson(*result, request, suggestion);
  else
    std::printf("%s\n", suggestion.c_str());
  return 0;
}

}  // namespace nimbletype::cli
