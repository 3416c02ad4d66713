#include "core/completion/asking/request_builder.h"

#include <algorithm>

#include "core/prompt/prompt_builder.h"
#include "text/text.h"

namespace nimbletype {
namespace {

// Room for long words and for languages whose words take several tokens each.
int tokensFor(int words) {
  return 2 * words + 6;
}

}  // namespace

Milliseconds pauseFor(double delayMilliseconds) {
  constexpr double longest = 60'000;
  return Milliseconds(static_cast<Milliseconds::rep>(std::clamp(delayMilliseconds, 0.0, longest)));
}

CompletionLength lengthFor(CompletionLength wanted, bool onBattery, bool batteryShorter) {
  if (!onBattery || !batteryShorter) return wanted;
  return wanted == CompletionLength::longLength ? CompletionLength::medium : CompletionLength::shortLength;
}

std::string modelFor(EngineKind kind, const Preferences& prefs, bool onBattery) {
  if (!usesServer(kind)) return {};
  if (onBattery && !prefs.batteryModel.get().empty()) return prefs.batteryModel.get();
  return kind == EngineKind::ollama ? prefs.ollamaModel.get() : prefs.serverModel.get();
}

PromptContext allowedContext(PromptContext c, const Preferences& prefs) {
  if (!prefs.contextApp.get()) c.appName.clear(), c.windowTitle.clear();
  if (!prefs.contextWebsite.get()) c.domain.clear();
  if (!prefs.contextClipboard.get()) c.clipboard.clear();
  if (!prefs.contextScreen.get()) c.screenText.clear();
  if (!prefs.contextNearbyWindows.get()) c.nearbyText.clear();
  if (!prefs.contextRecent.get()) c.recentText.clear();
  c.aboutWriter = prefs.customInstructions.get();
  return c;
}

CompletionRequest makeRequest(const RequestParts& parts) {
  const std::string_view last = text::lastCharacter(parts.before);
  CompletionRequest request;
  request.instructions = systemPrompt(parts.words);
  request.prompt = userMessage(parts.context, parts.before);
  // Editors on web pages write no-break spaces that a model would take for something rare.
  request.rawPrompt = rawPrompt(parts.context, text::withPlainSpaces(parts.window));
  request.maxTokens = tokensFor(parts.words);
  request.temperature = parts.temperature;
  request.stop = {"\n"};
  request.model = parts.model;
  request.healLast = text::isLetter(last) || text::isDigit(last);
  request.spaceTyped = text::withPlainSpaces(last) == " ";
  return request;
}

}  // namespace nimbletype
