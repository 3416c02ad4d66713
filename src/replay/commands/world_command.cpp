#include "replay/commands/world_command.h"

#include "text/format/date_format.h"
#include "text/format/timestamp.h"

namespace nimbletype {
namespace {

void setClock(const std::string& moment, ScriptedDesktop& desktop) {
  const auto time = text::fromIso8601(moment);
  if (!time) throw LineError("\"" + moment + "\" is no time in ISO 8601");
  desktop.loop.setWallNow(*time);
}

void setTimeZone(const std::string& name, ScriptedDesktop& desktop) {
  if (!text::isTimeZone(name)) throw LineError("there is no time zone \"" + name + "\"");
  desktop.region.current.timeZone = name;
}

void setFrontApp(const Json& value, ScriptedDesktop& desktop) {
  if (!value.is_object()) throw LineError("\"frontApp\" must be an object");
  LineReader app(value);
  FieldSnapshot& field = desktop.field.field();
  field.bundleID = app.requiredText("bundleID");
  field.appName = app.text("appName").value_or(field.bundleID);
}

void setMisspelled(const Json& value, ScriptedDesktop& desktop) {
  if (!value.is_object()) throw LineError("\"misspelled\" must be an object");
  desktop.spellChecker.words.clear();
  desktop.typo.forget();
  for (const auto& [word, correction] : value.items()) {
    if (!correction.is_string() && !correction.is_null())
      throw LineError("the correction of \"" + word + "\" must be a text or null");
    desktop.spellChecker.words[word] =
        correction.is_null() ? std::nullopt : std::optional(correction.get<std::string>());
  }
}

}  // namespace

void applyWorld(LineReader& line, ScriptedDesktop& desktop) {
  if (const auto onBattery = line.boolean("onBattery")) desktop.powerSource.setBattery(*onBattery);
  if (const auto secure = line.boolean("secureInput")) desktop.secureInput.on = *secure;
  if (const auto now = line.text("now")) setClock(*now, desktop);
  if (auto locale = line.text("locale")) desktop.region.current.locale = *std::move(locale);
  if (const auto zone = line.text("timeZone")) setTimeZone(*zone, desktop);
  if (line.has("frontApp")) setFrontApp(line.json("frontApp"), desktop);
  if (auto name = line.text("writerName")) desktop.context.gathered.writerName = *std::move(name);
  if (line.has("misspelled")) setMisspelled(line.json("misspelled"), desktop);
  if (const auto status = line.text("engineStatus")) desktop.engineStatus = ProviderStatus::good(*status);
  desktop.engine.contextChanged();
}

void applyContext(LineReader& line, ScriptedDesktop& desktop) {
  ScriptedContext& context = desktop.context;
  if (line.has("windowTitle")) context.windowTitle = line.text("windowTitle");
  if (line.has("domain")) context.domain = line.text("domain");
  PromptContext& gathered = context.gathered;
  for (auto& [name, part] :
       {std::pair{"clipboard", &gathered.clipboard}, std::pair{"screenText", &gathered.screenText},
        std::pair{"nearbyText", &gathered.nearbyText}, std::pair{"recentText", &gathered.recentText}})
    if (line.has(name)) *part = line.text(name).value_or("");
  desktop.engine.contextChanged();
}

}  // namespace nimbletype
