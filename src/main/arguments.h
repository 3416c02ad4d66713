#pragma once
#include <expected>
#include <optional>
#include <string>
#include <vector>

namespace nimbletype {

// What a start of the program asks for.
struct Arguments {
  bool playIntro = false, openSettings = false;
  std::string pane{};  // of the settings; empty for the one that was open last
  std::optional<std::string> model{};
  bool verbose = false, help = false, version = false;
  bool operator==(const Arguments&) const = default;
};

// From the words behind the program's name; a sentence for the user where they are wrong. What the desktop
// and Qt pass is let through: their options, file names, and whatever begins with one dash.
std::expected<Arguments, std::string> readArguments(const std::vector<std::string>& words);

// What "--help" prints.
std::string argumentsHelp();

}  // namespace nimbletype
