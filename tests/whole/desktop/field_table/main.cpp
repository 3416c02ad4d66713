// Puts texts into fields of real applications, takes a word of the suggestion by each method, and prints what
// came of it: where the ghost stood, seen from the caret, and by which means the word came, for not every
// application takes every one. Pictures are kept in OUT_FOLDER. Ends with 1 when something went wrong.
//   tools/stage/with_desktop.sh field_table APPLICATION OUT_FOLDER FIELD...
#include <array>
#include <cstdio>

#include "tests/whole/desktop/field_table/field_trial.h"

namespace {

using namespace nimbletype;

constexpr std::array texts{
    TrialText{"ASCII", "We will meet at", " the old river bank", " the "},
    TrialText{"accents", "Déjà vu à la crème", " brûlée très douce", " brûlée "},
    TrialText{"curly quotes", "She said “no” and", " it’s “all” good", " it’s "},
    TrialText{"Chinese and Japanese", "今日は天気がいいので", "公園まで歩きます", "公園まで歩きます"},
    TrialText{"emoji", "Well done 👍🏽👩‍👩‍👧", " 🎉🙌🏿 again soon", " 🎉🙌🏿 "},
    TrialText{"second line", "Dear all,\nwe will meet at", " the old river bank", " the "},
    TrialText{"right to left", "שלום לכולם", " מחר בבוקר נפגש", " מחר "},
};
constexpr std::array methods{"typing", "accessibility", "paste"};

bool tell(const std::string& field, const char* method, const char* text, const TrialResult& result) {
  std::printf("%-19s %-14s %-21s %-7s %-7s %-14s %s\n", field.c_str(), method, text,
              result.passed ? "ok" : "FAILED", result.place.c_str(), result.means.c_str(),
              result.words.c_str());
  std::fflush(stdout);
  return result.passed;
}

bool tryIn(const std::string& application, const std::filesystem::path& out, const std::string& field) {
  ScriptedModel model;
  Scene scene({application, "", field});
  FieldTrial trial(scene, model);
  if (editorProgram(field)->role == "AXSecureTextField") {
    scene.setSettings('{' + model.settings() + '}');
    scene.startApplication();
    return tell(field, "typing", "a password", trial.runSecret());
  }
  bool passed = true;
  for (const char* method : methods) {
    // Its own typing aids would get in between.
    scene.setSettings('{' + model.settings() + R"(,"suggestFixes":false,"showKeyHint":false,"insertion":")" +
                      method + "\"}");
    scene.startApplication();
    for (const TrialText& text : texts)
      passed =
          tell(field, method, text.name, trial.run(text, out / (field + "-" + method + "-" + text.name))) &&
          passed;
  }
  return passed;
}

}  // namespace

int main(int argc, char** argv) {
  return tryInFields(argc, argv, tryIn);
}
