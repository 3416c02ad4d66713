#pragma once
#include <memory>

#include "core/app/key_router.h"
#include "core/app/setting_effects.h"
#include "core/completion/completion_engine.h"
#include "core/settings/preferences.h"
#include "input/keys/key_tap.h"
#include "overlay/emoji/emoji_picker_panel.h"
#include "overlay/lists/alternatives_panel.h"
#include "platform/scripted/desktop/scripted_screens.h"
#include "platform/scripted/drawing/fixed_font_metrics.h"
#include "platform/scripted/drawing/recording_overlay_surface.h"
#include "platform/scripted/keys/scripted_event_tap.h"
#include "platform/scripted/keys/scripted_secure_input.h"
#include "platform/scripted/language/scripted_region_source.h"
#include "platform/scripted/language/scripted_spell_checker.h"
#include "platform/scripted/storage/memory_defaults_store.h"
#include "platform/scripted/storage/memory_file_store.h"
#include "platform/scripted/storage/memory_secret_store.h"
#include "platform/scripted/system/recording_system_log.h"
#include "platform/scripted/system/scripted_background_work.h"
#include "platform/scripted/system/scripted_power_source.h"
#include "replay/desktop/printing_ghost.h"
#include "replay/desktop/scripted_context.h"
#include "replay/desktop/scripted_field.h"
#include "replay/desktop/scripted_provider.h"

namespace nimbletype {

// A status as it is printed.
Json statusFields(const Status& status);

// The list of other suggestions as it is printed.
Json alternativesFields(const AlternativesPanel& panel);

// The emoji picker as it is printed.
Json emojiFields(const EmojiPickerPanel& panel);

// A desktop that is nothing but a script, with the real core on it: everything that a user or the desktop
// would notice is printed.
class ScriptedDesktop {
 public:
  explicit ScriptedDesktop(std::ostream& stream);

  VirtualMainLoop loop;
  ReplayOutput output;
  MemoryDefaultsStore defaults;
  MemoryFileStore rulesFile, statisticsFile, memoryFile;
  MemorySecretStore secrets;
  ScriptedBackgroundWork background;
  RecordingSystemLog log;
  ScriptedPowerSource powerSource;
  ScriptedSecureInput secureInput;
  ScriptedSpellChecker spellChecker;
  ScriptedScreens screens;
  ScriptedEventTap eventTap;
  ScriptedRegionSource region;
  ScriptedField field;
  ScriptedContext context;
  ReplyQueue replies;
  std::optional<ProviderStatus> engineStatus;
  std::vector<std::string> notes;  // what whoever wrote the current line should know

  Preferences prefs;
  AppRules rules;
  StatsStore stats;
  WritingMemory memory;
  ProviderHub hub;
  TypoChecker typo;
  PowerMonitor power;
  PrintingGhost ghost;
  RecordingOverlaySurface alternativesSurface, emojiSurface;
  FixedFontMetrics fontMetrics;
  EmojiIndex emoji;
  EmojiPickerPanel emojiPicker;
  AlternativesPanel alternatives;
  Observable<std::string> rival;  // never any
  CompletionEngine engine;
  KeyTap keyTap;
  KeyRouter keys;
  std::vector<Task> following;
  Task statusPrinting;
};

}  // namespace nimbletype
