#pragma once
#include <string>
#include <string_view>

#include "core/prompt/prompt_context.h"
#include "core/settings/preferences.h"
#include "engines/provider/completion_request.h"
#include "platform/system/main_loop.h"

namespace nimbletype {

// How long to wait for more typing before anything is asked: whole milliseconds, of a setting that may have
// been edited by hand.
Milliseconds pauseFor(double delayMilliseconds);

// The length of the next suggestion: the rule's or the general setting, shorter on battery when that is
// wanted.
CompletionLength lengthFor(CompletionLength wanted, bool onBattery, bool batteryShorter);

// The model name a server engine is asked for; empty for engines with a model of their own.
std::string modelFor(EngineKind kind, const Preferences& prefs, bool onBattery);

// What the settings allow of a gathered context.
PromptContext allowedContext(PromptContext gathered, const Preferences& prefs);

struct RequestParts {
  const PromptContext& context;
  std::string_view before;  // the text before the caret
  std::string_view window;  // its end, as the raw form continues it
  int words = 0;
  double temperature = 0;
  std::string model;
};
CompletionRequest makeRequest(const RequestParts& parts);

}  // namespace nimbletype
