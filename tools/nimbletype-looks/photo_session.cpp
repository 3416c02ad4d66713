#include "tools/nimbletype-looks/photo_session.h"

#include <algorithm>
#include <sstream>

#include "tools/stage/scene/scene.h"

namespace nimbletype {
namespace {

using namespace std::chrono_literals;

constexpr std::uint16_t letterV = 9;
constexpr int margin = 24;        // pixels around the window: a suggestion may stand out of it
constexpr auto settling = 300ms;  // for carets to blink and buttons to fade

bool opensOthers(const PhotoScene& scene) {
  return !std::string_view(scene.others).empty();
}

std::string settingsOf(const PhotoScene& scene, const ScriptedModel& model) {
  const std::string own = scene.settings;
  // The checker's say only where a scene is about it.
  const std::string others = R"("delayMilliseconds":0,"keyHintsShown":0,"hideOnTypo":false,"length":"long")";
  const bool fixes = own.find("suggestFixes") != std::string::npos;
  const bool hint = own.find("showKeyHint") != std::string::npos;
  return "{" + model.settings() + "," + others + (fixes ? "" : R"(,"suggestFixes":false)") +
         (hint ? "" : R"(,"showKeyHint":false)") + (opensOthers(scene) ? R"(,"onDemandOnly":true)" : "") +
         (own.empty() ? "" : "," + own) + "}";
}

void write(Scene& stage, const PhotoScene& scene, X11Pasteboard& clipboard) {
  for (int line = 1; line <= scene.linesBefore; ++line) {
    stage.user().type("This is line " + std::to_string(line));
    stage.user().press(key::returnKey);
  }
  if (scene.linesBefore > 0) rest(settling);  // nobody types twenty lines in no time
  const std::string text = scene.text;
  if (std::ranges::all_of(text, [](char c) { return c >= ' ' && c <= '~'; })) return stage.user().type(text);
  // What no key of the layout types.
  if (!clipboard.lend(text)) throw GaveUp("could not copy the text");
  stage.user().press(letterV, {ModifierSet::control});
}

void openOthers(Scene& stage, const PhotoScene& scene, ScriptedModel& model) {
  waitFor("the text in " + std::string(scene.editor), [&] { return stage.editor().text() == scene.text; });
  std::istringstream lines(scene.others);
  for (std::string line; std::getline(lines, line);) model.willSayOnce(line);
  stage.user().press(key::downArrow, {ModifierSet::option});
  waitFor("all of the other suggestions", [&] {
    stage.trace().readOn();
    return stage.trace().lastStatus() == "Showing a suggestion";
  });
}

void awaitSuggestion(Scene& stage, const PhotoScene& scene) {
  const std::string wanted = scene.suggestion;
  waitFor("the suggestion of " + std::string(scene.name), [&] {
    if (!stage.ghost().onScreen()) return false;
    stage.trace().readOn();
    const auto& last = stage.trace().lastSuggestion();
    return wanted.empty() || (last && wanted.starts_with(last->text) && last->before.ends_with(scene.text));
  });
}

}  // namespace

QImage PhotoSession::take(const PhotoScene& scene) {
  ScriptedModel model;
  model.willSay(scene.suggestion);
  Scene stage({application_, "", scene.editor, {}, {}, settingsOf(scene, model), scene.look});
  stage.editor().moveTo({scene.x, scene.y});
  stage.editor().resize(QSize(scene.width, scene.height) * scene.look.scale);
  stage.startApplication();
  write(stage, scene, clipboard_);
  if (opensOthers(scene)) openOthers(stage, scene, model);
  awaitSuggestion(stage, scene);
  rest(settling);
  const QRect window(stage.editor().corner(), stage.editor().picture().size());
  const QRect shown = stage.ghost().onScreen().value_or(window);
  const QRect around = (window | shown).adjusted(-margin, -margin, margin, margin);
  return stage.windows().screen(around & stage.windows().wholeScreen());
}

}  // namespace nimbletype
