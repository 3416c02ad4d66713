#include "tools/stage/scene/scene.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>

#include "core/completion/showing/suggestion.h"

namespace nimbletype {
namespace {

using namespace std::chrono_literals;

const std::string servedModel = "starter";

constexpr std::array sentences{"Thank you for your",      "Please let me know if you",
                               "I am looking forward to", "We would like to",
                               "It was great to",         "If you have any questions"};

// Text that can be typed over and taken in two pieces.
bool isLongEnough(const std::string& text) {
  const bool plain = std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
  return plain && text.size() >= nextChunk(text, true, true).size() + 6;
}

std::string contentOf(const std::filesystem::path& file) {
  std::ifstream stream(file);
  return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace

ScratchFolder::ScratchFolder() {
  std::string name = std::filesystem::temp_directory_path() / "nimbletype-demo.XXXXXX";
  if (!mkdtemp(name.data())) throw GaveUp("cannot make a folder like " + name);
  path_ = name;
}

ScratchFolder::~ScratchFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

Scene::Scene(Cast cast)
    : cast_(std::move(cast)),
      editor_(cast_.editor, folder_.path(), windows_, cast_.look),
      trace_(folder_.path() / "trace") {}

void Scene::writeSettings() const {
  // Without chance, so that every run shows the same, and without a window that asks for a tray.
  nlohmann::json settings{{"creativity", 0.0}, {"remindHiddenIcon", false}};
  if (!cast_.engine.empty()) settings["engine"] = cast_.engine;
  if (server_) settings.update({{"serverURL", server_->url("/v1")}, {"serverModel", servedModel}});
  if (!cast_.settings.empty()) settings.update(nlohmann::json::parse(cast_.settings));
  std::filesystem::create_directories(dataFolder());
  std::ofstream(dataFolder() / "settings.json") << settings.dump();
}

std::chrono::milliseconds Scene::startApplication() {
  if (!cast_.server.empty())
    server_ = std::make_unique<LlamaServer>(cast_.server, cast_.model,
                                            std::vector<std::string>{"--alias", servedModel});
  application_.reset();
  ghost_.reset();
  trace_ = TraceLog(folder_.path() / "trace");
  writeSettings();
  std::vector<std::string> command{cast_.application, "--verbose"};
  if (!cast_.model.empty() && !server_) command.insert(command.end(), {"--model", cast_.model});
  const auto start = Clock::now();
  application_ = std::make_unique<ChildProcess>(ChildProcess::Start{
      command,
      {{"XDG_DATA_HOME", folder_.path() / "data"}, {"NIMBLETYPE_TRACE", folder_.path() / "trace"}},
      folder_.path() / "application.log"});
  ghost_ = std::make_unique<GhostWindow>(windows_, static_cast<std::uint32_t>(application_->processID()));
  waitFor("\"Nimbletype is ready\" from " + cast_.application, [this] {
    if (!application_->isRunning()) throw GaveUp("the application ended: " + applicationLog());
    return applicationLog().find("Nimbletype is ready.\n") != std::string::npos;
  });
  const auto took = std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - start);
  waitFor("the application to follow the text field", [this] { return trace_.has("fieldChanged"); });
  return took;
}

std::string Scene::applicationLog() const {
  return contentOf(folder_.path() / "application.log");
}

void Scene::typeKey(char character, std::chrono::milliseconds restAfter) {
  if (character == '\n')
    user_.press(key::returnKey);
  else
    user_.type(std::string_view(&character, 1));
  rest(restAfter);
}

void Scene::typeSlowly(const std::string& text) {
  for (const char character : text) typeKey(character, 70ms);
}

std::string Scene::typeUntilGhost(const std::function<void(const std::string& sentence)>& tellSkipped) {
  std::string typed;
  for (const std::string sentence : sentences) {
    typeSlowly(sentence);
    typed += sentence;
    waitFor("the typed text in the document", [&] { return editor_.text().ends_with(sentence); });
    if (endsInGhost()) return typed;
    tellSkipped(sentence);
    typeKey('\n', 70ms);
    typed += '\n';
  }
  throw GaveUp("saw no ghost after any of " + std::to_string(sentences.size()) + " sentences");
}

bool Scene::endsInGhost() {
  return comesTrue(
      [this] {
        const auto text = offered();
        return text && isLongEnough(*text);
      },
      6s);
}

std::optional<std::string> Scene::offered() {
  trace_.readOn();
  const auto& last = trace_.lastSuggestion();
  if (!last || !ghost_->onScreen()) return std::nullopt;
  const std::string document = editor_.text(), whole = withPlainBlanks(last->before + last->text);
  if (!whole.starts_with(document) || whole.size() == document.size()) return std::nullopt;
  return whole.substr(document.size());
}

}  // namespace nimbletype
