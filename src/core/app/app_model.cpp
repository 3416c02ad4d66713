#include "core/app/app_model.h"

#include "engines/builtin_provider.h"
#include "input/key_combo_display.h"

namespace nimbletype {
namespace {

std::vector<std::unique_ptr<CompletionProvider>> makeProviders(Ports& ports) {
  std::vector<std::unique_ptr<CompletionProvider>> providers;
  providers.push_back(makeBuiltInProvider(ports.loop, ports.model, ports.log));
  return providers;
}

}  // namespace

AppModel::AppModel(Ports ports)
    : ports_(std::move(ports)),
      injector_(ports_.eventPoster, ports_.accessibility, ports_.log),
      fieldSource_({ports_.accessibility, ports_.workspace, ports_.secureInput, ports_.loop, ports_.log},
                   injector_),
      keyTap_(ports_.eventTap, ports_.log),
      prefs_(ports_.defaults),
      rules_(prefs_, ports_.rulesFile, ports_.loop, ports_.log),
      hub_(makeProviders(ports_)),
      typo_(ports_.spellChecker),
      ghost_({ports_.ghostSurface, ports_.screens, ports_.fontMetrics, ports_.log}),
      context_(ports_.loop, ports_.user),
      engine_({ports_.loop, prefs_, rules_, hub_, context_, typo_, ghost_, ports_.screens, ports_.secureInput,
               ports_.power, ports_.log}),
      keys_(keyTap_, engine_, prefs_) {
  engine_.setSource(fieldSource_);
  const auto showHintLabel = [this] {
    if (const auto& combo = prefs_.acceptWordKey.get()) ghost_.setHintLabel(displayName(*combo));
  };
  showHintLabel();
  hintLabel_ = prefs_.acceptWordKey.observe(showHintLabel);
}

bool AppModel::start() {
  const bool tapRunning = keyTap_.start();
  fieldSource_.start();
  ports_.log.log("app", std::string("system-wide start: tap running ") + (tapRunning ? "true" : "false"));
  return tapRunning;
}

}  // namespace nimbletype
