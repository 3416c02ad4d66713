#include <charconv>
#include <cstdio>
#include <optional>

#include "cli.h"
#include "core/settings/preferences.h"
#include "desktop.h"
#include "overlay/emoji/emoji_picker_panel.h"

namespace nimbletype::cli {
namespace {

constexpr const char* help = R"(usage: nimbletype-cli emoji WORD [options]

Lists the emoji that a colon and this word find, best first, each with its score and its name: 1000 for the whole name
or shortcut, 500 for the start of a shortcut, 400 for the start of a word of the name, 150 for letters inside it.

  --tone N          in this skin tone, 1 (light) to 5 (dark) or 0 for none, instead of the one that is set

Exit status: 0; 1 when no emoji match; 2 for wrong arguments.
)";

struct Options {
  std::optional<std::string> word;
  std::optional<SkinTone> tone;
  bool help = false;
};

std::nullopt_t complain(const std::string& sentence) {
  std::fprintf(stderr, "nimbletype-cli emoji: %s\n", sentence.c_str());
  return std::nullopt;
}

std::optional<SkinTone> toneIn(const std::string& argument) {
  SkinTone tone = 0;
  const char* end = argument.data() + argument.size();
  const auto [rest, error] = std::from_chars(argument.data(), end, tone);
  if (error != std::errc() || rest != end || tone < 0 || tone > 5) return std::nullopt;
  return tone;
}

// A word may begin with a minus sign, as "-1" does.
std::optional<Options> parse(Arguments arguments) {
  Options options;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& argument = arguments[i];
    if (argument == "--help") {
      options.help = true;
    } else if (argument == "--tone") {
      options.tone = i + 1 < arguments.size() ? toneIn(arguments[++i]) : std::nullopt;
      if (!options.tone) return complain("--tone needs a number from 0 to 5");
    } else if (argument.starts_with("--")) {
      return complain("there is no option " + argument);
    } else if (options.word) {
      return complain("one word at a time");
    } else {
      options.word = argument;
    }
  }
  if (!options.word && !options.help) return complain("a word is needed");
  return options;
}

// As it may have been typed, with its colons.
std::string_view withoutColons(std::string_view word) {
  if (word.starts_with(':')) word.remove_prefix(1);
  if (word.ends_with(':')) word.remove_suffix(1);
  return word;
}

}  // namespace

int emoji(Arguments arguments) {
  const auto options = parse(arguments);
  if (!options) return 2;
  if (options->help) return std::fputs(help, stdout), 0;
  const auto desktop = makeDesktop();
  const Preferences prefs(desktop->defaults());
  const SkinTone tone = options->tone.value_or(static_cast<SkinTone>(prefs.skinTone.get()));
  const std::string word(withoutColons(*options->word));
  EmojiIndex index;
  const auto matches = index.matches(word);
  for (const auto& [item, score] : matches)
    for (const EmojiItem& shown : inTone({*item}, tone, prefs.includeNeutralTone.get()))
      std::printf("%4d  %s\t%s\n", score, shown.emoji.c_str(), shown.name.c_str());
  if (matches.empty()) std::printf("%s\n", noEmojiText(word).c_str());
  return matches.empty() ? 1 : 0;
}

}  // namespace nimbletype::cli
