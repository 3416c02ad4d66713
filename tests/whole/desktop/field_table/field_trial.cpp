#include "tests/whole/desktop/field_table/field_trial.h"

#include <algorithm>
#include <cmath>

namespace nimbletype {
namespace {

using namespace std::chrono_literals;

constexpr auto patience = 6s;
constexpr auto quiet = 120ms, layoutPatience = 3000ms;
constexpr double tolerance = 2;  // pixels
constexpr std::uint16_t letterV = 9;
constexpr const char* secretWords = "open sesame";

bool isTypable(const std::string& text) {
  return std::ranges::all_of(text, [](char c) { return (c >= ' ' && c <= '~') || c == '\n'; });
}

std::string quoted(const std::string& text) {
  return "\"" + text + "\"";
}

std::string signedNumber(double value) {
  const long whole = std::lround(value);
  return (whole < 0 ? "" : "+") + std::to_string(whole);
}

}  // namespace

void FieldTrial::awaitDocument(const std::string& text) {
  user_.awaitText(user_.told(text), patience);
}

void FieldTrial::awaitOffer(const std::string& text) {
  if (comesTrue([&] { return scene_.offered() == text; }, patience)) return;
  const auto& last = scene_.trace().lastSuggestion();
  throw GaveUp("waited for a ghost " + quoted(text) + (scene_.ghost().onScreen() ? ", one" : ", none") +
               " is on screen, the last one was " + (last ? quoted(last->text) : "never"));
}

// What no key of the layout types is pasted by the user.
void FieldTrial::enter(const std::string& text) {
  if (isTypable(text)) {
    for (const char character : text) scene_.typeKey(character, 0ms);
  } else {
    if (!clipboard_.lend(text)) throw GaveUp("could not copy the text");
    scene_.user().press(letterV, {ModifierSet::control});
  }
  awaitDocument(text);
}

void FieldTrial::empty() {
  user_.empty();
  waitFor(
      "the ghost to go with the text", [this] { return !scene_.ghost().onScreen(); }, patience);
}

TrialResult FieldTrial::run(const TrialText& text, const std::filesystem::path& picture) {
  if (scene_.editor().program().holdsOneLine && std::string_view(text.text).find('\n') != std::string::npos)
    return {.passed = true, .words = "not there, the field holds one line"};
  TrialResult result;
  try {
    model_.willSay(text.continuation);
    enter(text.text);
    awaitOffer(text.continuation);
    awaitQuiet();
    scene_.editor().picture().save(QString::fromStdString(picture.string() + "-ghost.png"));
    compare(result);
    const std::size_t logged = scene_.applicationLog().size();
    takeWord(text);
    scene_.editor().picture().save(QString::fromStdString(picture.string() + "-word.png"));
    result.means = meansSince(logged);
    empty();
    result.passed = result.words.empty();
  } catch (const GaveUp& failure) {
    result.words = failure.what() + circumstances();
    try {
      empty();
    } catch (const GaveUp&) {
    }
  }
  return result;
}

// What the application was at: its status and the last line of its log.
std::string FieldTrial::circumstances() {
  std::string log = scene_.applicationLog();
  while (log.ends_with('\n')) log.pop_back();
  return "; status: " + scene_.trace().lastStatus() + "; log: " + log.substr(log.rfind('\n') + 1);
}

// Left to right the ghost begins at the caret, right to left it ends there. A page that has just been opened
// tells of its carets late.
void FieldTrial::compare(TrialResult& result) {
  const bool isThere = comesTrue(
      [&] {
        const auto caret = scene_.editor().caret();
        const auto ghost = scene_.ghost().onScreen();
        if (!caret || !ghost) throw GaveUp(caret ? "the ghost went" : "the field tells no caret");
        const bool toTheLeft = scene_.editor().continuesToTheLeft();
        const double right = (toTheLeft ? ghost->left() + ghost->width() : ghost->left()) - caret->x;
        const double down = ghost->top() + ghost->height() / 2.0 - (caret->y + caret->height / 2);
        result.place = signedNumber(right) + "," + signedNumber(down);
        return std::abs(right) <= tolerance && std::abs(down) <= tolerance;
      },
      layoutPatience);
  if (!isThere) result.words = "the ghost is not at the caret";
}

void FieldTrial::takeWord(const TrialText& text) {
  scene_.user().press(key::tab);
  awaitDocument(std::string(text.text) + text.word);
  const std::string remaining = std::string(text.continuation).substr(std::string(text.word).size());
  if (!remaining.empty()) awaitOffer(remaining);
}

std::string FieldTrial::meansSince(std::size_t logged) {
  const std::string log = scene_.applicationLog().substr(logged);
  const auto has = [&](const char* words) { return log.find(words) != std::string::npos; };
  return has("input: paste: ") ? "clipboard" : has("input: write: ") ? "Accessibility" : "keys";
}

void FieldTrial::awaitQuiet() {
  for (std::size_t before = 0, now = scene_.applicationLog().size(); now != before;) {
    before = now;
    rest(quiet);
    now = scene_.applicationLog().size();
  }
}

TrialResult FieldTrial::runSecret() {
  const auto failed = [](std::string words) { return TrialResult{.words = std::move(words)}; };
  try {
    model_.willSay("never shown");
    scene_.user().type(secretWords);
    waitFor(
        "the status to say why there is nothing",
        [&] {
          scene_.trace().readOn();
          return scene_.trace().lastStatus().find("Secure input") != std::string::npos;
        },
        patience);
  } catch (const GaveUp& failure) {
    return failed(failure.what() + circumstances());
  }
  if (scene_.ghost().onScreen()) return failed("there is a ghost");
  if (model_.wasTold(secretWords)) return failed("the model was told the password");
  if (scene_.applicationLog().find(secretWords) != std::string::npos)
    return failed("the log has the password");
  return {.passed = true, .words = "nothing read or shown: " + scene_.trace().lastStatus()};
}

}  // namespace nimbletype
