#pragma once
#include "core/completion/asking/context_cache.h"
#include "core/completion/asking/example_cache.h"
#include "core/completion/asking/reply_cleaner.h"
#include "core/prompt/text_window.h"
#include "engines/provider/provider_hub.h"
#include "input/monitors/power_monitor.h"

namespace nimbletype {

// What an engine is to be asked.
struct Question {
  CompletionProvider& provider;
  CompletionRequest request;
  ReplyCleaner clean;  // for its replies
};

// Puts together what an engine is asked: the text before the caret, what surrounds it, and the user's wishes.
class RequestMaker {
 public:
  struct Services {
    MainLoop& loop;
    const Preferences& prefs;
    const ProviderHub& hub;
    ContextSource& context;
    const WritingMemory& memory;
    const PowerMonitor& power;
    TypoChecker& typo;
  };

  explicit RequestMaker(const Services& services)
      : s_(services),
        context_(services.context, services.loop),
        examples_(services.memory, services.prefs, services.loop) {}

  // The user enters the field, or goes on writing in it.
  void seen(const FieldSnapshot& snapshot) { examples_.seen(snapshot); }
  // What the context source would hand over has changed.
  void contextChanged() { context_.invalidate(); }
  // None when this build has no such engine.
  std::optional<Question> question(const FieldSnapshot& snapshot, CompletionLength length);

 private:
  Services s_;
  ContextCache context_;
  ExampleCache examples_;
  TextWindow window_;
};

}  // namespace nimbletype
