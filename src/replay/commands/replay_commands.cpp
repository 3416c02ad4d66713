#include "replay/commands/replay_commands.h"

#include <chrono>
#include <map>

#include "core/settings/preferences_json.h"
#include "personal/memory/memory_json.h"
#include "replay/commands/field_command.h"
#include "replay/commands/world_command.h"
#include "text/text.h"

namespace nimbletype {
namespace {

// Of the right type, but without a meaning: stored like that, it reads back as the default.
bool isMeaningless(const AnySetting* setting, const Json& value) {
  if (!setting) return false;
  return (setting->type() == SettingType::choice && value.is_string()) ||
         (setting->type() == SettingType::keyCombo && value.is_object());
}

void assignDefault(AnySetting& setting) {
  MemoryDefaultsStore nothingStored;
  const Preferences defaults(nothingStored);
  setting.assign(defaults.find(setting.key())->stored());
}

void set(LineReader& line, ScriptedDesktop& desktop) {
  const std::string key = line.requiredText("key");
  const Json& value = line.json("value");
  const auto done = setFromJson(desktop.prefs, key, value);
  if (done) return;
  AnySetting* setting = desktop.prefs.find(key);
  if (!isMeaningless(setting, value)) throw LineError(done.error());
  assignDefault(*setting);
  desktop.notes.push_back(done.error() + " Its default is used.");
}

void reset(LineReader&, ScriptedDesktop& desktop) {
  desktop.prefs.reset();
  desktop.rules.clear();
}

template <typename Enum>
std::optional<Enum> choice(LineReader& line, const char* name) {
  const auto raw = line.text(name);
  if (!raw) return std::nullopt;
  const auto value = fromRawValue<Enum>(*raw);
  if (!value) throw LineError("\"" + *raw + "\" is no value of \"" + name + "\"");
  return value;
}

std::string ruleKey(LineReader& line) {
  std::string key = line.requiredText("key");
  if (!isRuleKey(key))
    throw LineError("\"" + key + "\" is no rule key: it must begin with \"app:\" or \"web:\"");
  return key;
}

// Fields left out keep their value; null goes back to the general setting.
void rule(LineReader& line, ScriptedDesktop& desktop) {
  const std::string key = ruleKey(line);
  if (line.boolean("remove").value_or(false)) return desktop.rules.removeRule(key);
  AppRule rule = desktop.rules.rule(key);
  if (line.has("mode")) rule.mode = choice<RuleMode>(line, "mode").value_or(RuleMode::inherit);
  if (line.has("tabAccepts")) rule.tabAccepts = line.boolean("tabAccepts");
  if (line.has("insertion")) rule.insertion = choice<InsertionMethod>(line, "insertion");
  if (line.has("length")) rule.length = choice<CompletionLength>(line, "length");
  if (line.has("recordWriting")) rule.recordWriting = line.boolean("recordWriting");
  desktop.rules.setRule(key, rule);
}

bool isEverywhere(LineReader& line) {
  return line.requiredText("key") == "*";
}

void pause(LineReader& line, ScriptedDesktop& desktop) {
  const auto seconds = line.integer("seconds");
  if (isEverywhere(line))
    return desktop.rules.pauseEverywhere(seconds ? std::optional(std::chrono::seconds(*seconds))
                                                 : std::nullopt);
  if (!seconds) throw LineError("\"seconds\" must be a whole number unless everything is paused");
  desktop.rules.pause(ruleKey(line), std::chrono::seconds(*seconds));
}

void resume(LineReader& line, ScriptedDesktop& desktop) {
  if (isEverywhere(line))
    desktop.rules.resumeEverywhere();
  else
    desktop.rules.resume(ruleKey(line));
}

void type(LineReader& line, ScriptedDesktop& desktop) {
  const std::string text = line.requiredText("text");
  for (std::string_view character : text::characters(text)) desktop.field.type(character);
}

void backspace(LineReader& line, ScriptedDesktop& desktop) {
  const auto count = line.integer("count").value_or(1);
  for (std::int64_t i = 0; i < count; ++i) desktop.field.backspace();
}

void pressKey(LineReader& line, ScriptedDesktop& desktop) {
  const auto keyCode = line.requiredInteger("keyCode"), modifiers = line.integer("modifiers").value_or(0);
  if (keyCode > 65535) throw LineError("\"keyCode\" must not be above 65535");
  if (modifiers > 15) throw LineError("\"modifiers\" must not be above 15");
  const KeyPress press{static_cast<std::uint16_t>(keyCode),
                       {static_cast<std::uint8_t>(modifiers)},
                       line.text("characters").value_or(""),
                       line.boolean("isRepeat").value_or(false)};
  const bool used = desktop.eventTap.press(press);
  desktop.output.print("key", {{"keyCode", keyCode}, {"modifiers", modifiers}, {"used", used}});
}

void pointer(LineReader&, ScriptedDesktop& desktop) {
  desktop.eventTap.pointer();
}

void reply(LineReader& line, ScriptedDesktop& desktop) {
  ScriptedReply reply;
  const auto text = line.text("text"), error = line.text("error");
  const auto candidates = line.texts("candidates");
  if (!text && !error && !candidates) throw LineError("a reply needs \"text\", \"error\" or \"candidates\"");
  if (error)
    reply.result = std::unexpected(ProviderError{*error});
  else if (text)
    reply.result = Completion{*text, {}};
  else
    reply.result = Completion{candidates->empty() ? "" : candidates->front(), {}};
  if (candidates) reply.candidates = *candidates;
  reply.after = Milliseconds(line.integer("afterMs").value_or(50));
  reply.times = line.integer("times").value_or(1);
  desktop.replies.add(std::move(reply));
}

void advance(LineReader& line, ScriptedDesktop& desktop) {
  desktop.loop.advance(Milliseconds(line.requiredInteger("ms")));
}

void suggestNow(LineReader&, ScriptedDesktop& desktop) {
  desktop.engine.suggestNow();
}
void alternatives(LineReader&, ScriptedDesktop& desktop) {
  desktop.engine.showAlternatives();
}
void toggleApp(LineReader&, ScriptedDesktop& desktop) {
  desktop.engine.toggleApp();
}
void toggleGlobal(LineReader&, ScriptedDesktop& desktop) {
  desktop.engine.toggleGlobal();
}

Json storedSettings(const ScriptedDesktop& desktop) {
  Json stored = Json::object();
  const Json all = toJson(desktop.prefs);
  for (const auto& [key, value] : all.items())
    if (desktop.defaults.get(key)) stored[key] = value;
  return stored;
}

Json shownStatistics(const ScriptedDesktop& desktop) {
  Json statistics = desktop.stats.json();
  statistics["streak"] = desktop.stats.streak();
  statistics["summary"] = desktop.stats.summary();
  return statistics;
}

Json shownMemory(const ScriptedDesktop& desktop) {
  Json passages = Json::array();
  for (const MemoryEntry& entry : desktop.memory.entries()) passages.push_back(json(entry));
  return passages;
}

void show(LineReader& line, ScriptedDesktop& desktop) {
  const std::string what = line.requiredText("what");
  Json value;
  if (what == "status")
    value = statusFields(desktop.engine.status().get());
  else if (what == "stats")
    value = shownStatistics(desktop);
  else if (what == "memory")
    value = shownMemory(desktop);
  else if (what == "rules")
    value = desktop.rules.json();
  else if (what == "settings")
    value = storedSettings(desktop);
  else
    throw LineError("nothing called \"" + what + "\" can be shown");
  desktop.output.print("state", {{"what", what}, {"value", value}});
}

}  // namespace

ReplayCommand replayCommand(std::string_view kind) {
  static const std::map<std::string_view, ReplayCommand> commands{
      {"set", set},
      {"reset", reset},
      {"world", applyWorld},
      {"rule", rule},
      {"pause", pause},
      {"resume", resume},
      {"context", applyContext},
      {"field", applyField},
      {"type", type},
      {"backspace", backspace},
      {"key", pressKey},
      {"pointer", pointer},
      {"reply", reply},
      {"advance", advance},
      {"suggestNow", suggestNow},
      {"toggleApp", toggleApp},
      {"alternatives", alternatives},
      {"toggleGlobal", toggleGlobal},
      {"show", show},
  };
  const auto found = commands.find(kind);
  return found == commands.end() ? nullptr : found->second;
}

}  // namespace nimbletype
