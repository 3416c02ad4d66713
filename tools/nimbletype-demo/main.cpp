// Drives the real application as a user would and checks that its main job is done.
//   tools/stage/with_desktop.sh nimbletype-demo --app PROGRAM --model FILE --editor mousepad --out DIR
// Editors warn the root account: put `unshare --user --map-user=1000 --map-group=1000` before it for pictures
// without.
#include <cstdio>
#include <map>
#include <optional>

#include "tools/nimbletype-demo/resources.h"
#include "tools/nimbletype-demo/walkthrough.h"

namespace {

using namespace nimbletype;

constexpr const char* usage =
    "usage: nimbletype-demo --app PROGRAM --model FILE --editor mousepad|featherpad|chromium|writer --out "
    "DIR\n"
    "                       [--dpi N]\n"
    "                       [--engine openAI --server LLAMA_SERVER]\n"
    "       nimbletype-demo --measure --app PROGRAM [--model FILE] [--editor "
    "mousepad|featherpad|chromium]\n";

struct Options {
  std::map<std::string, std::string> values{{"--app", ""},   {"--model", ""}, {"--editor", "mousepad"},
                                            {"--out", ""},   {"--dpi", ""},   {"--engine", ""},
                                            {"--server", ""}};
  bool measure = false;

  Scene::Cast cast() const {
    return {values.at("--app"), values.at("--model"), values.at("--editor"), values.at("--engine"),
            values.at("--server")};
  }
};

std::optional<Options> readOptions(int count, char** words) {
  Options options;
  for (int i = 1; i < count; ++i) {
    const std::string word = words[i];
    const auto known = options.values.find(word);
    if (word == "--measure")
      options.measure = true;
    else if (known != options.values.end() && i + 1 < count)
      known->second = words[++i];
    else
      return std::nullopt;
  }
  const bool complete =
      !options.values["--app"].empty() && (options.measure || !options.values["--out"].empty());
  return complete ? std::optional(options) : std::nullopt;
}

// What there is to be known when a wait has ended in vain.
void tellState(Scene& scene, Transcript& transcript) {
  scene.trace().readOn();
  transcript.plain("status: " + scene.trace().lastStatus() + "; the ghost is " +
                   (scene.ghost().onScreen() ? "on screen" : "hidden") + "; the document: \"" +
                   scene.editor().text() + "\"");
  transcript.plain("last steps:" + scene.trace().lastSteps());
  transcript.plain(scene.applicationLog());
}

bool demonstrate(const Options& options) {
  const std::filesystem::path out = options.values.at("--out");
  std::filesystem::create_directories(out);
  Transcript transcript(out / "transcript.txt");
  std::optional<Scene> scene;
  try {
    if (const int dpi = std::atoi(options.values.at("--dpi").c_str()); dpi > 0)
      DesktopWindows().setFontResolution(dpi);
    scene.emplace(options.cast());
    transcript.say(options.values.at("--editor") + " is open, its text field focused");
    const auto took = scene->startApplication();
    transcript.say("the application was ready after " + std::to_string(took.count()) +
                   " ms and follows the field");
    return Walkthrough(*scene, transcript, out).run();
  } catch (const GaveUp& failure) {
    transcript.say(std::string("GAVE UP: ") + failure.what());
    if (scene) tellState(*scene, transcript);
    return false;
  }
}

}  // namespace

int main(int argc, char** argv) {
  const auto options = readOptions(argc, argv);
  if (!options) return std::fputs(usage, stderr), 2;
  giveUpOnSignals();
  try {
    if (!options->measure) return demonstrate(*options) ? 0 : 1;
    measureResources(options->cast());
    return 0;
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "nimbletype-demo: %s\n", failure.what());
    return 1;
  }
}
