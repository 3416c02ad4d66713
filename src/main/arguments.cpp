#include "main/arguments.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace nimbletype {
namespace {

constexpr std::array<std::string_view, 11> panes{"overview", "general",   "context", "personal",
                                                 "keys",     "emoji",     "apps",    "power",
                                                 "insights", "inspector", "about"};
// Those of Qt that stand alone, and those that a value follows. It takes them with one dash or two.
constexpr std::array<std::string_view, 7> qtFlags{"reverse", "sync",        "nograb",       "dograb",
                                                  "nogl",    "widgetcount", "qmljsdebugger"};
constexpr std::array<std::string_view, 15> qtOptions{"platform",        "platformpluginpath",
                                                     "platformtheme",   "plugin",
                                                     "qwindowgeometry", "geometry",
                                                     "qwindowtitle",    "title",
                                                     "qwindowicon",     "icon",
                                                     "display",         "name",
                                                     "style",           "stylesheet",
                                                     "session"};

template <typename Names>
bool contains(const Names& names, std::string_view name) {
  return std::ranges::find(names, name) != names.end();
}

// A word of the form "--name" or "--name=value", with one dash or two.
struct Option {
  explicit Option(std::string_view word) {
    const std::size_t equals = std::min(word.find('='), word.size());
    name = word.substr(0, equals);
    bare = name.substr(std::min(name.find_first_not_of('-'), name.size()));
    if (equals < word.size()) value = word.substr(equals + 1);
  }
  std::string_view name, bare;
  std::optional<std::string_view> value;
};

class Reader {
 public:
  explicit Reader(const std::vector<std::string>& words) : words_(words) {}

  std::expected<Arguments, std::string> read() {
    while (at_ < words_.size() && words_[at_] != "--" && fault_.empty()) take(Option(words_[at_++]));
    if (!fault_.empty()) return std::unexpected(fault_);
    return read_;
  }

 private:
  void take(const Option& option) {
    if (option.name == "--play-intro") {
      read_.playIntro = true;
    } else if (option.name == "--open-settings") {
      takeSettings(option);
    } else if (option.name == "--model") {
      takeModel(option);
    } else if (option.name == "--verbose") {
      read_.verbose = true;
    } else if (option.name == "--help") {
      read_.help = true;
    } else if (option.name == "--version") {
      read_.version = true;
    } else if (option.name.starts_with('-') && contains(qtOptions, option.bare)) {
      if (!option.value) ++at_;
    } else if (option.name.starts_with("--") && !contains(qtFlags, option.bare)) {
      fault_ = "Nimbletype does not know \"" + std::string(option.name) + "\"; --help lists what it knows.";
    }
  }

  void takeSettings(const Option& option) {
    read_.openSettings = true;
    if (option.value)
      read_.pane = *option.value;
    else if (at_ < words_.size() && contains(panes, words_[at_]))
      read_.pane = words_[at_++];
    if (!read_.pane.empty() && !contains(panes, read_.pane))
      fault_ = "The settings have no pane \"" + read_.pane + "\"; --help lists them.";
  }

  void takeModel(const Option& option) {
    if (option.value)
      read_.model = *option.value;
    else if (at_ < words_.size())
      read_.model = words_[at_++];
    if (!read_.model || read_.model->empty()) fault_ = "\"--model\" needs the name of a file behind it.";
  }

  const std::vector<std::string>& words_;
  std::size_t at_ = 0;
  Arguments read_;
  std::string fault_;
};

}  // namespace

std::expected<Arguments, std::string> readArguments(const std::vector<std::string>& words) {
  return Reader(words).read();
}

std::string argumentsHelp() {
  std::string text =
      "Usage: nimbletype [OPTION...]\n"
      "Finishes your sentences in any application.\n\n"
      "  --open-settings [PANE]  Open the settings, at one of their panes.\n"
      "  --play-intro            Play the intro.\n"
      "  --model FILE            Use this GGUF file as it is.\n"
      "  --verbose               Write diagnostics to standard error.\n"
      "  --help                  Show this and end.\n"
      "  --version               Show the version and end.\n\n"
      "PANE is one of:";
  for (const auto pane : panes) text += " " + std::string(pane);
  return text + ".\n";
}

}  // namespace nimbletype
