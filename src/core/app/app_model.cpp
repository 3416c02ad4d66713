#include "core/app/app_model.h"

#include "core/rules/built_in_lists.h"
#include "engines/engine_set.h"

namespace nimbletype {
AppModel::AppModel(Ports ports)
    : ports_(std::move(ports)),
      injector_({ports_.eventPoster, ports_.accessibility, ports_.pasteboard, ports_.loop, ports_.log}),
      fieldSource_({ports_.accessibility, ports_.workspace, ports_.secureInput, ports_.loop, ports_.log,
                    ports_.fontMetrics},
                   injector_),
      keyTap_(ports_.eventTap, ports_.log),
      prefs_(ports_.defaults),
      rules_(prefs_, ports_.rulesFile, ports_.loop, ports_.log),
      stats_(ports_.statisticsFile, ports_.loop, ports_.log, ports_.region),
      memory_({ports_.memoryFile, ports_.secrets, ports_.background, ports_.loop, ports_.log}),
      modelStore_({ports_.loop, ports_.downloads, ports_.background, ports_.disk, ports_.log},
                  builtInModel(modelHub(ports_.defaults, ports_.log)), ports_.dataFolder / "Models"),
      namedModel_(ports_.modelFile),
      hub_(makeProviders({ports_.loop, prefs_,
                          ports_.modelFile ? static_cast<ModelLocator&>(namedModel_) : modelStore_,
                          ports_.http, ports_.secrets, ports_.onDevice, ports_.log})),
      typo_(ports_.spellChecker),
      power_(ports_.power, ports_.loop),
      ghost_({ports_.ghostSurface, ports_.screens, ports_.fontMetrics, ports_.log}),
      emojiPicker_({ports_.emojiSurface, ports_.screens, ports_.fontMetrics}),
      alternatives_({ports_.alternativesSurface, ports_.screens, ports_.fontMetrics}, ports_.loop),
      context_({ports_.loop, ports_.accessibility, ports_.workspace, ports_.screens, ports_.secureInput,
                ports_.screenReader, ports_.clipboardText},
               prefs_, ports_.user, [this](const RunningApp& app) { return mayLookInto(app); }),
      engine_({ports_.loop, prefs_, rules_, hub_, context_, typo_, ghost_, alternatives_, emoji_,
               emojiPicker_, ports_.screens, ports_.fontMetrics, ports_.secureInput, power_, stats_, memory_,
               ports_.log}),
      keys_(keyTap_, engine_, prefs_),
      permissions_(ports_.permissions, ports_.systemSettings, ports_.loop),
      watch_(permissions_, keyTap_, ports_.loop, ports_.log, [this] { fieldSource_.start(); }) {
  engine_.setSource(fieldSource_);
  engine_.session().askTerminal([this] {
    const auto front = ports_.workspace.frontmost();
    return front && front->isTerminal;
  });
  context_.onChange([this] { engine_.contextChanged(); });
  modelPhase_ = modelStore_.observe([this] {
    if (modelStore_.phase().state == ModelPhase::Case::installed) engine_.warmUp();
  });
  memorySwitch_ = prefs_.memoryEnabled.observe([this] {
    const bool isPaused = memory_.state().state == MemoryState::Case::paused;
    if (prefs_.memoryEnabled.get() && isPaused) memory_.retry();
  });
}

// Neither terminals nor password managers. Where the user wants no suggestions at all, nothing is read for
// those elsewhere either.
bool AppModel::mayLookInto(const RunningApp& app) const {
  if (app.isOurs || app.isTerminal || isOffByDefault(app.bundleID)) return false;
  return rules_.rule(appRuleKey(app.bundleID)).mode != RuleMode::off;
}

bool AppModel::start() {
  memory_.load();
  engine_.warmUp();
  return watch_.start();
}

void AppModel::stop() {
  watch_.stop();
  engine_.session().leave();
  memory_.finish();
}

bool AppModel::canWrite() const {
  CompletionProvider* writer = hub_.writer(prefs_.engine.get());
  return writer && writer->isReady();
}

}  // namespace nimbletype
