#include "core/app/app_model.h"

#include "core/app/setting_effects.h"
#include "core/rules/built_in_lists.h"
#include "engines/engine_set.h"

namespace nimbletype {
AppModel::AppModel(Ports ports)
    : ports_(std::move(ports)),
      permissions_(ports_.permissions, ports_.systemSettings, ports_.loop),
      rivals_(ports_.runningApps, ports_.loop, RivalApps(ports_.bundleIdentifier)),
      power_(ports_.power, ports_.loop),
      windows_(ports_.makeWindows(*this)),
      injector_({ports_.eventPoster, ports_.accessibility, ports_.pasteboard, ports_.loop, ports_.log}),
      fieldSource_({ports_.accessibility, ports_.workspace, ports_.secureInput, ports_.loop, ports_.log,
                    ports_.fontMetrics},
                   injector_),
      source_(fieldSource_),
      keyTap_(ports_.eventTap, ports_.log),
      migration_({ports_.defaults, ports_.earlierDefaults, ports_.secrets, ports_.earlierSecrets,
                  ports_.background, ports_.log},
                 {ports_.earlierFolder, ports_.dataFolder}),
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
      ghost_({ports_.ghostSurface, ports_.screens, ports_.fontMetrics, ports_.log}),
      emojiPicker_({ports_.emojiSurface, ports_.screens, ports_.fontMetrics}),
      alternatives_({ports_.alternativesSurface, ports_.screens, ports_.fontMetrics}, ports_.loop),
      context_({ports_.loop, ports_.accessibility, ports_.workspace, ports_.screens, ports_.secureInput,
                ports_.screenReader, ports_.clipboardText},
               prefs_, ports_.user, [this](const RunningApp& app) { return mayLookInto(app); }),
      engine_({ports_.loop, prefs_, rules_, hub_, context_, typo_, ghost_, alternatives_, emoji_,
               emojiPicker_, ports_.screens, ports_.fontMetrics, ports_.secureInput, power_, stats_, memory_,
               rivals_.pausedBy(), ports_.log}),
      keys_(keyTap_, engine_, prefs_),
      watch_(permissions_, keyTap_, ports_.loop, ports_.log, [this] { fieldSource_.start(); }),
      launchAtLogin_(ports_.loginItem, ports_.log),
      hiders_(ports_.runningApps, ports_.statusBar, ports_.screens),
      menu_({prefs_, rules_, stats_, permissions_, rivals_, modelStore_, engine_.status(),
             fieldSource_.frontApp(), ports_.workspace, ports_.region},
            {[this] { windows_->openPlayground(); }, [this] { windows_->openSettings({}); }, ports_.quit}),
      statusItem_({ports_.statusBar, windows_->menuPanel(), ports_.loop, prefs_},
                  {[this] { return menu_.state(); }, [this](MenuAction action) { menu_.act(action); },
                   [this] { menu_.lookAgain(); }}),
      hiddenIcon_(hiders_, prefs_, ports_.loop, [this](bool isHidden) {
        isHidden ? windows_->openHiddenIconPrompt() : windows_->closeHiddenIconPrompt();
      }) {
  engine_.setSource(source_);
  engine_.session().askTerminal([this] {
    const auto front = ports_.workspace.frontmost();
    return front && front->isTerminal;
  });
  context_.onChange([this] { engine_.contextChanged(); });
}

// Windows observe what is gone before they are.
AppModel::~AppModel() {
  windows_->closeAll();
}

// Neither terminals nor password managers. Where the user wants no suggestions at all, nothing is read for
// those elsewhere either.
bool AppModel::mayLookInto(const RunningApp& app) const {
  if (app.isOurs || app.isTerminal || isOffByDefault(app.bundleID)) return false;
  return rules_.rule(appRuleKey(app.bundleID)).mode != RuleMode::off;
}

std::vector<Task> AppModel::followSettings() {
  return follow(prefs_, {.engineChosen = [this] { engine_.engineChosen(); },
                         .keysChanged = [this] { keys_.keysChanged(); },
                         .memorySwitched =
                             [this] {
                               const bool isPaused = memory_.state().state == MemoryState::Case::paused;
                               if (prefs_.memoryEnabled.get() && isPaused) memory_.retry();
                             },
                         .iconSwitched =
                             [this] {
                               statusItem_.installItem();
                               hiddenIcon_.installed();
                             },
                         .countSwitched = [this] { statusItem_.refreshItem(); }});
}

bool AppModel::start() {
  following_ = followSettings();
  following_.push_back(modelStore_.observe([this] {
    if (modelStore_.phase().state == ModelPhase::Case::installed) engine_.warmUp();
  }));
  following_.push_back(permissions_.observe([this] { accessMayHaveArrived(); }));
  following_.push_back(menu_.observe([this] { statusItem_.refreshItem(); }));
  memory_.awaitFile();
  migration_.finish({[this] { memory_.load(); }, [this] { modelStore_.refresh(); }});
  engine_.warmUp();
  return watch_.start();
}

void AppModel::showFace() {
  menu_.lookAgain();
  ports_.statusBar.onPlaceChange([this] { hiddenIcon_.placeChanged(); });
  statusItem_.installItem();
  hiddenIcon_.installed();
  rivals_.start([this] { rivalAppeared(); });
}

// The last that began is the first to stop; whatever holds keys comes before whatever takes time.
void AppModel::stop() {
  following_.clear();
  ports_.statusBar.onPlaceChange({});
  hiddenIcon_.cancel();
  statusItem_.removeItem();
  windows_->closeAll();
  rivals_.stop();
  watch_.stop();
  engine_.session().leave();
  modelStore_.cancelDownload();
  memory_.finish();
  rules_.saveNow();
  stats_.saveNow();
}

void AppModel::rivalAppeared() {
  const bool quits = prefs_.quitRivalsAutomatically.get();
  ports_.log.log("app", std::string("rival app running, auto quit ") + (quits ? "true" : "false"));
  if (quits)
    rivals_.quitRivals(false);
  else
    windows_->openRivalPrompt();
}

void AppModel::accessMayHaveArrived() {
  const std::string title = "Accessibility is on. ", message = "Nimbletype is ready in your other apps.";
  if (permissions_.accessibility() && permissions_.accessibilityGrantedAt() &&
      permissions_.celebrate(title + message))
    windows_->tell(title, message);
}

bool AppModel::canWrite() const {
  CompletionProvider* writer = hub_.writer(prefs_.engine.get());
  return writer && writer->isReady();
}

}  // namespace nimbletype
