// Puts texts into fields of real applications, takes a word of the suggestion by each method, and prints what
// came of it as a table: where the ghost stood, seen from the caret, and by which means the word came, for
// not every application takes every one. The table and pictures are kept in OUT_FOLDER. Ends with 1 when
// something went wrong.
//   tools/stage/with_desktop.sh field_table APPLICATION OUT_FOLDER FIELD...
#include <array>
#include <cstdio>
#include <memory>

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

class Table {
 public:
  Table(std::string application, std::filesystem::path out)
      : application_(std::move(application)), out_(std::move(out)) {
    std::filesystem::create_directories(out_);
    file_.reset(std::fopen((out_ / "table.txt").c_str(), "w"));
    print("field", "method", "text", "", "ghost", "came by", "");
  }

  bool run(const std::string& field) {
    try {
      ScriptedModel model;
      Scene scene({application_, "", field});
      if (editorProgram(field)->role == "AXSecureTextField") return runSecret(scene, model, field);
      for (const char* method : methods) runMethod(scene, model, field, method);
    } catch (const GaveUp& failure) {
      note(field, "", "", {.words = failure.what()});
    }
    return passed_;
  }

 private:
  bool runSecret(Scene& scene, ScriptedModel& model, const std::string& field) {
    scene.setSettings('{' + model.settings() + '}');
    scene.startApplication();
    note(field, "a password", "typing", FieldTrial(scene, model).runSecret());
    return passed_;
  }

  void runMethod(Scene& scene, ScriptedModel& model, const std::string& field, const std::string& method) {
    // Its own typing aids would get in between.
    scene.setSettings('{' + model.settings() + R"(,"suggestFixes":false,"showKeyHint":false,"insertion":")" +
                      method + "\"}");
    scene.startApplication();
    FieldTrial trial(scene, model);
    for (const TrialText& text : texts)
      note(field, text.name, method, trial.run(text, out_ / (field + "-" + method + "-" + text.name)));
  }

  void note(const std::string& field, const std::string& text, const std::string& method,
            const TrialResult& result) {
    print(field, method, text, result.passed ? "ok" : "FAILED", result.place, result.means, result.words);
    passed_ = passed_ && result.passed;
  }

  void print(const std::string& field, const std::string& method, const std::string& text,
             const std::string& outcome, const std::string& place, const std::string& means,
             const std::string& words) const {
    for (std::FILE* file : {stdout, file_.get()}) {
      if (!file) continue;
      std::fprintf(file, "%-19s %-14s %-21s %-7s %-7s %-14s %s\n", field.c_str(), method.c_str(),
                   text.c_str(), outcome.c_str(), place.c_str(), means.c_str(), words.c_str());
      std::fflush(file);
    }
  }

  std::string application_;
  std::filesystem::path out_;
  std::unique_ptr<std::FILE, int (*)(std::FILE*)> file_{nullptr, std::fclose};
  bool passed_ = true;
};

}  // namespace

int main(int argc, char** argv) {
  if (argc < 4) return std::fputs("usage: field_table APPLICATION OUT_FOLDER FIELD...\n", stderr), 2;
  giveUpOnSignals();
  Table table(argv[1], argv[2]);
  bool passed = true;
  for (int i = 3; i < argc; ++i) passed = table.run(argv[i]) && passed;
  return passed ? 0 : 1;
}
