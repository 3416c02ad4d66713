#pragma once
#include <filesystem>
#include <string>

#include "platform/linux/pasteboard/x11_pasteboard.h"
#include "platform/scripted/system/virtual_main_loop.h"
#include "tests/whole/desktop/field_user.h"

namespace nimbletype {

// What is put into a field, how the model goes on, and the word that Tab is to take of that.
struct TrialText {
  const char *name, *text, *continuation, *word;
};

struct TrialResult {
  bool passed = false;
  std::string place = {};  // of the ghost, in pixels from the caret; empty when there was none
  std::string means = {};  // by which the word came into the field
  std::string words = {};  // what else people should know
};

// Text put into a real field, suggestion, Tab, and what stands in the field then.
class FieldTrial {
 public:
  FieldTrial(Scene& scene, ScriptedModel& model) : scene_(scene), user_(scene), model_(model) {}

  // Leaves the field empty.
  TrialResult run(const TrialText& text, const std::filesystem::path& picture);
  // Of a field that keeps its text to itself.
  TrialResult runSecret();

 private:
  void enter(const std::string& text);
  void awaitDocument(const std::string& text);
  void awaitOffer(const std::string& text);
  std::string circumstances();
  void empty();
  void compare(TrialResult& result);
  void takeWord(const TrialText& text);
  std::string meansSince(std::size_t logged);
  // The application neither hears nor does anything.
  void awaitQuiet();

  Scene& scene_;
  FieldUser user_;
  ScriptedModel& model_;
  VirtualMainLoop unused_;  // what is lent is never saved
  X11Pasteboard clipboard_{unused_};
};

}  // namespace nimbletype
