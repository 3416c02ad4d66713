#pragma once
#include <optional>
#include <string>
#include <vector>

#include "core/completion/asking/field_session.h"
#include "core/rules/app_rules.h"
#include "core/settings/preferences.h"
#include "personal/memory/writing_memory.h"

namespace nimbletype {

// Whether the memory may keep what stood in a field: never secrets, nor what is written in terminals,
// password managers, private windows and fields of our own, nor where the user does not want it.
bool mayRemember(const LeftField& field, const Preferences& prefs, const AppRules& rules);

// The passages for the field being written in. They are chosen when the field is entered, or emptied, and
// after a typing pause, so that no key press waits for it and prompts share their beginning while the user
// types.
class ExampleCache {
 public:
  // When the rest of the context is gathered anew as well.
  static constexpr Milliseconds pause{3000};

  ExampleCache(const WritingMemory& memory, const Preferences& prefs, MainLoop& loop);
  // The user enters the field, or goes on writing in it.
  void seen(const FieldSnapshot& snapshot);
  // None while the memory is switched off. A passage that stands in the field anyway is none.
  const std::vector<std::string>& examples(const FieldSnapshot& snapshot);

 private:
  void choose(const FieldSnapshot& snapshot);

  const WritingMemory& memory_;
  const Preferences& prefs_;
  MainLoop& loop_;
  std::string fieldKey_;
  std::optional<std::vector<std::string>> chosen_;
  Task soon_;
  std::vector<Task> observations_;
};

}  // namespace nimbletype
