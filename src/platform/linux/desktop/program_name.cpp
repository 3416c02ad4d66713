#include "platform/linux/desktop/program_name.h"

#include <algorithm>
#include <array>
#include <span>
#include <string_view>

namespace nimbletype {
namespace {

using Words = std::span<const std::string>;

constexpr std::array<std::string_view, 11> interpreters{"sh",   "bash", "dash", "zsh", "python", "perl",
                                                        "ruby", "node", "gjs",  "cjs", "lua"};

std::string baseName(std::string_view path) {
  return std::string(path.substr(path.rfind('/') + 1));
}

// "python" of "python3.11".
bool isInterpreter(std::string_view name) {
  name = name.substr(0, name.find_last_not_of("0123456789.") + 1);
  return std::ranges::find(interpreters, name) != interpreters.end();
}

// What "env" runs stands behind its options and assignments.
Words behindEnv(Words words) {
  if (words.empty() || baseName(words[0]) != "env") return words;
  const auto command = std::ranges::find_if(words.subspan(1), [](const std::string& word) {
    return !word.starts_with('-') && word.find('=') == std::string::npos;
  });
  return {command, words.end()};
}

std::string scriptIn(Words arguments) {
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    if (arguments[i] == "-c" || arguments[i] == "-e") return {};
    if (arguments[i] == "-m") return i + 1 < arguments.size() ? arguments[i + 1] : std::string();
    if (!arguments[i].starts_with('-')) return baseName(arguments[i]);
  }
  return {};
}

// A sandboxed application is known outside by the program it has inside.
std::string commandIn(Words arguments) {
  constexpr std::string_view option = "--command=";
  for (const auto& word : arguments)
    if (word.starts_with(option)) return baseName(word.substr(option.size()));
  return {};
}

}  // namespace

std::string programStartedBy(const std::vector<std::string>& words) {
  const Words command = behindEnv(words);
  if (command.empty()) return {};
  const std::string name = baseName(command[0]);
  if (name == "flatpak") return commandIn(command.subspan(1));
  return isInterpreter(name) ? scriptIn(command.subspan(1)) : name;
}

}  // namespace nimbletype
