#pragma once
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "cli.h"

namespace nimbletype::cli {

// The options of one command, each said once, and what reads them. Arguments that make no sense are answered
// with one sentence on standard error.
class Options {
 public:
  // What is wrong with the value; empty when nothing is.
  using Take = std::function<std::string(const std::string& value)>;

  Options(const char* command, const char* help);
  Options(const Options&) = delete;
  Options& operator=(const Options&) = delete;
  void flag(const char* name, bool& on);
  // `needed` ends the sentence "--name needs ..." when nothing follows.
  void value(const char* name, Take take, const char* needed = "a value");
  void value(const char* name, std::optional<std::string>& value, const char* needed = "a value");
  // The one argument that is no option; a second one is answered with the sentence.
  void text(std::optional<std::string>& text, const char* onlyOne);

  // The exit status when nothing is left to do: help was given, or the arguments make no sense.
  std::optional<int> read(Arguments arguments) const;
  int complain(const std::string& sentence, int status = 2) const;

 private:
  struct Option {
    std::string name, needed;
    Take take;
  };
  // Moves on to the value. Empty when all is well.
  std::string readOne(Arguments arguments, std::size_t& at) const;

  const char *command_, *help_;
  std::vector<Option> options_;
  std::optional<std::string>* text_ = nullptr;
  std::string onlyOne_;
  bool wantsHelp_ = false;
};

}  // namespace nimbletype::cli
