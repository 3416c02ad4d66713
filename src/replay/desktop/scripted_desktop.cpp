#include "replay/desktop/scripted_desktop.h"

namespace nimbletype {
namespace {

std::string_view name(Status::Case state) {
  constexpr std::string_view names[] = {"idle", "waiting", "thinking", "showing", "blocked", "failed"};
  return names[static_cast<std::size_t>(state)];
}

std::vector<std::unique_ptr<CompletionProvider>> makeProviders(ScriptedDesktop& desktop) {
  std::vector<std::unique_ptr<CompletionProvider>> providers;
  for (EngineKind kind : {EngineKind::builtIn, EngineKind::apple, EngineKind::ollama, EngineKind::openAI})
    providers.push_back(
        std::make_unique<ScriptedProvider>(kind, desktop.replies, desktop.output, desktop.engineStatus));
  return providers;
}

}  // namespace

Json alternativesFields(const AlternativesPanel& panel) {
  Json rows;  // null when it is closed
  if (!panel.isVisible()) return {{"rows", rows}};
  const AlternativesModel& model = *panel.model();
  rows = Json::array();
  for (const std::string& item : model.items) rows.push_back(rowText(item, model.wordPrefix));
  return {{"rows", rows}, {"selected", model.selected}};
}

Json emojiFields(const EmojiPickerPanel& panel) {
  Json items;  // null when it is closed
  if (!panel.isVisible()) return {{"items", items}};
  const EmojiPickerModel& model = *panel.model();
  items = Json::array();
  for (const EmojiItem& item : model.items) items.push_back(item.emoji);
  return {{"items", items}, {"selected", model.selected}, {"replacing", model.replacing}};
}

Json statusFields(const Status& status) {
  return {{"case", name(status.state)}, {"label", status.label()}};
}

ScriptedDesktop::ScriptedDesktop(std::ostream& stream)
    : output(stream, loop),
      secrets(loop),
      background(loop),
      field(output),
      context(loop, region),
      replies(loop, output),
      prefs(defaults),
      rules(prefs, rulesFile, loop, log),
      stats(statisticsFile, loop, log, region),
      memory({memoryFile, secrets, background, loop, log}),
      hub(makeProviders(*this)),
      typo(spellChecker),
      power(powerSource, loop),
      ghost(output),
      emojiPicker({emojiSurface, screens, fontMetrics}),
      alternatives({alternativesSurface, screens, fontMetrics}, loop),
      engine({loop, prefs, rules, hub, context, typo, ghost, alternatives, emoji, emojiPicker, screens,
              fontMetrics, secureInput, power, stats, memory, rival, log}),
      keyTap(eventTap, log),
      keys(keyTap, engine, prefs),
      following(follow(prefs, {.engineChosen = [this] { engine.engineChosen(); },
                               .keysChanged = [this] { keys.keysChanged(); }})) {
  log.onLine = [this](const RecordingSystemLog::Line& line) {
    output.print("log", {{"category", line.category}, {"message", line.message}});
  };
  statusPrinting =
      engine.status().observe([this] { output.print("status", statusFields(engine.status().get())); });
  emojiPicker.onChanged([this] { output.print("emoji", emojiFields(emojiPicker)); });
  alternatives.onChanged([this] { output.print("alternatives", alternativesFields(alternatives)); });
  memory.load();
  engine.setSource(field);
  keyTap.start();
}

}  // namespace nimbletype
