#include "tools/nimbletype-demo/walkthrough.h"

#include "core/completion/showing/suggestion.h"
#include "tools/stage/scene/ink.h"

namespace nimbletype {
namespace {

using namespace std::chrono_literals;

constexpr std::size_t typedOverLetters = 3, measuredKeys = 50;
constexpr std::uint16_t letterA = 0;
constexpr int caretWidth = 3;
constexpr double leastCommonInk = 0.5;  // toolkits differ in how they smooth
constexpr std::string_view everydayText =
    "We will send the report on Monday and meet with the team to talk about it.";

std::string inQuotes(const std::string& text) {
  return "\"" + text + "\"";
}

// 80 to 120 ms, never the same twice in a row.
std::chrono::milliseconds humanRest(std::size_t key) {
  return std::chrono::milliseconds(80 + key * 17 % 41);
}

bool hasShrunk(const QRect& now, const QRect& before) {
  return now.left() > before.left() || now.width() < before.width() || now.height() < before.height();
}

}  // namespace

bool Walkthrough::run() {
  typeToGhost();
  takeWord();
  typeOver();
  takeRest();
  const bool done = documentIsAsExpected() && ghostLookedLikeText();
  measureTyping();
  return documentIsAsExpected() && done;
}

bool Walkthrough::documentIsAsExpected() {
  const std::string document = scene_.editor().text();
  const bool same = document == expected_;
  transcript_.say(
      "the document holds " + inQuotes(document) +
      (same ? ", which is what was typed and taken" : ", but EXPECTED was " + inQuotes(expected_)));
  return same;
}

void Walkthrough::typeToGhost() {
  const auto start = Clock::now();
  expected_ = scene_.typeUntilGhost([this](const std::string& sentence) {
    transcript_.say("no ghost of some words after " + inQuotes(sentence) +
                    "; the user goes on with another sentence");
  });
  const Clock::time_point last[] = {scene_.user().lastPress()};
  transcript_.say("typed " + inQuotes(expected_) + " in " +
                  inMilliseconds(millisecondsBetween(start, last[0])));
  transcript_.say("ghost on screen: " + inQuotes(expectedRest()));
  const auto timing = timingsSince(last).at(0);
  if (timing.total) transcript_.say("the last key: " + described(timing));
  withGhost_ = photograph("1-ghost.png");
  const auto place = scene_.ghost().onScreen();
  if (place) ghostPlace_ = place->translated(-scene_.editor().corner());
}

void Walkthrough::takeWord() {
  const std::string rest = expectedRest(), word(nextChunk(rest, true, true));
  const auto ghost = scene_.ghost().onScreen();
  scene_.user().press(key::tab);
  expected_ += word;
  awaitDocument("Tab took " + inQuotes(word));
  waitFor("the ghost to give way to the word taken", [&] {
    const auto now = scene_.ghost().onScreen();
    return now && ghost && hasShrunk(*now, *ghost);
  });
  photograph("2-word.png");
}

void Walkthrough::typeOver() {
  const std::string letters = expectedRest().substr(0, typedOverLetters);
  for (const char letter : letters) {
    const auto ghost = scene_.ghost().onScreen();
    scene_.typeKey(letter, 0ms);
    waitFor("the ghost to shrink as it is typed over", [&] {
      const auto now = scene_.ghost().onScreen();
      return now && ghost && hasShrunk(*now, *ghost);
    });
  }
  expected_ += letters;
  const Clock::time_point last[] = {scene_.user().lastPress()};
  waitFor("the typed letters in the document", [this] { return scene_.editor().text() == expected_; });
  transcript_.say("typed over it: " + inQuotes(letters) + "; left: " + inQuotes(expectedRest()) + "; " +
                  described(timingsSince(last).at(0)));
}

void Walkthrough::takeRest() {
  const std::string rest = expectedRest();
  scene_.user().press(key::aboveTab);
  expected_ += rest;
  awaitDocument("the key above Tab took " + inQuotes(rest));
  withText_ = photograph("3-all.png");
}

// In an emptied document: some editors tell where the caret is on the first line only.
void Walkthrough::measureTyping() {
  scene_.user().press(letterA, {ModifierSet::control});
  scene_.user().press(key::deleteBack);
  expected_.clear();
  awaitDocument("selecting all and deleting it emptied the document");
  std::vector<Clock::time_point> presses;
  for (std::size_t i = 0; i < measuredKeys; ++i) {
    rest(humanRest(i));
    scene_.typeKey(everydayText[i], 0ms);
    presses.push_back(scene_.user().lastPress());
  }
  expected_ += everydayText.substr(0, measuredKeys);
  awaitDocument("a line of " + std::to_string(measuredKeys) + " keys at the pace of a person");
  transcript_.plain(tableOf(timingsSince(presses)));
}

std::string Walkthrough::expectedRest() {
  std::optional<std::string> rest;
  waitFor("the rest of the ghost", [&] { return (rest = scene_.offered()).has_value(); });
  return *rest;
}

void Walkthrough::awaitDocument(const std::string& what) {
  const auto pressed = scene_.user().lastPress();
  try {
    waitFor(
        "this to be in the document: " + what, [this] { return scene_.editor().text() == expected_; }, 10s);
  } catch (const GaveUp&) {
    transcript_.say("the document holds " + inQuotes(scene_.editor().text()) + ", not " +
                    inQuotes(expected_));
    throw;
  }
  transcript_.say(what + "; in the document after " +
                  inMilliseconds(millisecondsBetween(pressed, Clock::now())));
}

// Accessibility tells of a change before the editor has painted it.
QImage Walkthrough::photograph(const std::string& name) {
  rest(300ms);
  QImage picture = scene_.editor().picture();
  if (!picture.save(QString::fromStdString(out_ / name)))
    throw GaveUp("could not write " + (out_ / name).string());
  return picture;
}

// In the editor's own font and size, on its baseline: once taken, the text is to stand where the ghost stood.
bool Walkthrough::ghostLookedLikeText() {
  const QRect beside = ghostPlace_.adjusted(caretWidth, 0, 0, 0);
  QRect text = inkWithin(withText_, beside).adjusted(0, 0, -caretWidth, 0);
  text.setTop(beside.top());
  text.setBottom(beside.bottom());
  text.setLeft(beside.left());
  // Some editors tell the caret's place a pixel too far left or right; the height has to be right.
  double share = 0;
  for (const int aside : {-1, 0, 1})
    share =
        std::max(share, commonInk(withGhost_, withText_.copy(withText_.rect().translated(aside, 0)), text));
  transcript_.say(std::to_string(static_cast<int>(100 * share)) +
                  " % of the ink of the ghost and of the text taken is in the same pixels");
  return share >= leastCommonInk;
}

std::vector<KeyTiming> Walkthrough::timingsSince(std::span<const Clock::time_point> presses) {
  scene_.trace().readOn();
  return splitByKey(presses, scene_.trace().entries(), scene_.ghost().changes(), scene_.ghost().endings());
}

}  // namespace nimbletype
