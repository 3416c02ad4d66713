#pragma once
#include <filesystem>

#include "tools/nimbletype-demo/transcript.h"
#include "tools/stage/scene/scene.h"

namespace nimbletype {

// The main job, start to end: type, see the ghost, take a word, type over it, take the rest.
class Walkthrough {
 public:
  Walkthrough(Scene& scene, Transcript& transcript, std::filesystem::path out)
      : scene_(scene), transcript_(transcript), out_(std::move(out)) {}

  // Whether the document holds what was typed and taken, and nothing else.
  bool run();

 private:
  void typeToGhost();
  void takeWord();
  void typeOver();
  void takeRest();
  void measureTyping();
  bool documentIsAsExpected();
  std::string expectedRest();
  void awaitDocument(const std::string& what);
  bool ghostLookedLikeText();
  QImage photograph(const std::string& name);
  std::vector<KeyTiming> timingsSince(std::span<const Clock::time_point> presses);

  Scene& scene_;
  Transcript& transcript_;
  std::filesystem::path out_;
  std::string expected_;  // what the document is to hold by now
  QImage withGhost_, withText_;
  QRect ghostPlace_;  // in the first picture
};

}  // namespace nimbletype
