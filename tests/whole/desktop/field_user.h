#pragma once
#include <cstdio>
#include <filesystem>

#include "tools/stage/scene/scene.h"
#include "tools/stage/scene/scripted_model.h"

namespace nimbletype {

// Who writes into the field of a scene and looks at what becomes of it.
class FieldUser {
 public:
  explicit FieldUser(Scene& scene) : scene_(scene) {}

  // What the field tells after this text.
  std::string told(const std::string& text) const {
    return scene_.editor().program().tellsOneParagraph ? text.substr(text.rfind('\n') + 1) : text;
  }
  void awaitText(const std::string& text, std::chrono::milliseconds patience = std::chrono::seconds(30)) {
    const auto holds = [&] { return scene_.editor().findField() && scene_.editor().text() == text; };
    if (!comesTrue(holds, patience))
      throw GaveUp("the field holds \"" + scene_.editor().text() + "\" instead of \"" + text + '"');
  }
  void empty() {
    scene_.user().press(letterA, {ModifierSet::control});
    scene_.user().press(key::deleteBack);
    awaitText("");
    // For so long a change of the text counts as the application's own insertion.
    rest(std::chrono::milliseconds(450));
  }

 private:
  static constexpr std::uint16_t letterA = 0;

  Scene& scene_;
};

// What a program does that is given APPLICATION OUT_FOLDER FIELD...: whether all went well in each field, as
// its exit status.
template <typename Try>
int tryInFields(int argc, char** argv, Try tryIn) {
  if (argc < 4) return std::fputs("usage: PROGRAM APPLICATION OUT_FOLDER FIELD...\n", stderr), 2;
  giveUpOnSignals();
  std::filesystem::create_directories(argv[2]);
  bool passed = true;
  for (int i = 3; i < argc; ++i) try {
      passed = tryIn(std::string(argv[1]), std::filesystem::path(argv[2]), std::string(argv[i])) && passed;
    } catch (const GaveUp& failure) {
      std::printf("%s FAILED: %s\n", argv[i], failure.what());
      passed = false;
    }
  return passed ? 0 : 1;
}

}  // namespace nimbletype
