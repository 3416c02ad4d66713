// Whether a suggestion stands where the application itself puts the same words: takes it, and compares the
// pictures. Ends with 1 where they are more than a pixel apart.
//   tools/stage/with_desktop.sh ghost_pixels APPLICATION OUT_FOLDER FIELD...
#include <array>
#include <cstdio>
#include <cstdlib>

#include "tests/whole/desktop/field_user.h"
#include "tools/stage/scene/ink.h"

namespace {

using namespace nimbletype;
using namespace std::chrono_literals;

constexpr std::uint16_t home = 115;
constexpr int caretWidth = 3, tolerance = 1;
constexpr auto painted = 400ms;

struct Words {
  const char *typed, *suggested;
};
constexpr std::array texts{
    Words{"We will meet at", " the old river bank"},
    Words{"Yours AVA", " Tokyo, WAVY 1,234 fjords (ill)"},
    Words{"The rest of a line that has got rather long by now", " is gyp"},
};

class Comparison {
 public:
  Comparison(Scene& scene, ScriptedModel& model, std::filesystem::path out)
      : scene_(scene), user_(scene), model_(model), out_(std::move(out)) {}

  // Leaves the field empty.
  bool run(const Words& words, const std::string& name) {
    model_.willSay(words.suggested);
    scene_.user().type(words.typed);
    waitFor("the ghost of " + name, [&] { return scene_.offered() == words.suggested; });
    const QImage withGhost = photograph(name + "-ghost.png");
    const QRect place = ghostPlace();
    scene_.user().press(key::aboveTab);
    user_.awaitText(std::string(words.typed) + words.suggested);
    scene_.user().press(home);  // takes the caret away
    const QImage withText = photograph(name + "-text.png");
    user_.empty();
    return tell(name, inkWithin(withGhost, place), inkWithin(withText, place));
  }

 private:
  QRect ghostPlace() const {
    const auto place = scene_.ghost().onScreen();
    if (!place) throw GaveUp("the ghost went");
    return place->translated(-scene_.editor().corner()).adjusted(caretWidth, 0, tolerance, 0);
  }

  static bool tell(const std::string& name, const QRect& ghost, const QRect& text) {
    const int edges[] = {ghost.left() - text.left(), ghost.right() - text.right(), ghost.top() - text.top(),
                         ghost.bottom() - text.bottom()};
    bool same = !ghost.isEmpty() && !text.isEmpty();
    for (const int edge : edges) same = same && std::abs(edge) <= tolerance;
    std::printf("%-28s ghost against text: left %+d, right %+d, top %+d, bottom %+d of %dx%d pixels%s\n",
                name.c_str(), edges[0], edges[1], edges[2], edges[3], text.width(), text.height(),
                same ? "" : " FAILED");
    std::fflush(stdout);
    return same;
  }

  // Accessibility tells of a change before the application has painted it.
  QImage photograph(const std::string& name) {
    rest(painted);
    QImage picture = scene_.editor().picture();
    picture.save(QString::fromStdString(out_ / name));
    return picture;
  }

  Scene& scene_;
  FieldUser user_;
  ScriptedModel& model_;
  std::filesystem::path out_;
};

constexpr int usualDpi = 96;

// "mousepad@120": at so many dots per inch.
bool compareIn(const std::string& application, const std::filesystem::path& out, const std::string& name) {
  const std::size_t at = name.find('@');
  const std::string field = name.substr(0, at);
  DesktopWindows().setFontResolution(at == std::string::npos ? usualDpi : std::stoi(name.substr(at + 1)));
  ScriptedModel model;
  Scene scene({application,
               "",
               field,
               {},
               {},
               '{' + model.settings() + R"(,"suggestFixes":false,"showKeyHint":false,"length":"long"})"});
  scene.startApplication();
  Comparison comparison(scene, model, out);
  bool same = true;
  for (std::size_t i = 0; i < texts.size(); ++i)
    same = comparison.run(texts[i], name + "-" + std::to_string(i + 1)) && same;
  return same;
}

}  // namespace

int main(int argc, char** argv) {
  return tryInFields(argc, argv, compareIn);
}
