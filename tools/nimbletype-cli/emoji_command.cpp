#include <charconv>
#include <cstdio>
#include <optional>

#include "cli.h"
#include "core/settings/preferences.h"
#include "desktop.h"
#include "options.h"
#include "overlay/emoji/emoji_picker_panel.h"

namespace nimbletype::cli {
namespace {

constexpr const char* help = R"(usage: nimbletype-cli emoji WORD [options]

Lists the emoji that a colon and this word find, best first, each with its score and its name: 1000 for the whole name
or shortcut, 500 for the start of a shortcut, 400 for the start of a word of the name, 150 for letters inside it.

  --tone N          in this skin tone, 1 (light) to 5 (dark) or 0 for none, instead of the one that is set

Exit status: 0; 1 when no emoji match; 2 for wrong arguments.
)";

std::optional<SkinTone> toneIn(const std::string& argument) {
  SkinTone tone = 0;
  const char* end = argument.data() + argument.size();
  const auto [rest, error] = std::from_chars(argument.data(), end, tone);
  if (error != std::errc() || rest != end || tone < 0 || tone > 5) return std::nullopt;
  return tone;
}

// As it may have been typed, with its colons.
std::string_view withoutColons(std::string_view word) {
  if (word.starts_with(':')) word.remove_prefix(1);
  if (word.ends_with(':')) word.remove_suffix(1);
  return word;
}

}  // namespace

int emoji(Arguments arguments) {
  std::optional<std::string> given;
  std::optional<SkinTone> wanted;
  const char* numbers = "a number from 0 to 5";
  Options options("emoji", help);
  options.value(
      "--tone",
      [&](const std::string& value) {
        wanted = toneIn(value);
        return wanted ? std::string() : "--tone needs " + std::string(numbers);
      },
      numbers);
  options.text(given, "one word at a time");
  if (const auto status = options.read(arguments)) return *status;
  if (!given) return options.complain("a word is needed");
  const auto desktop = makeDesktop();
  const Preferences prefs(desktop->defaults());
  const SkinTone tone = wanted.value_or(static_cast<SkinTone>(prefs.skinTone.get()));
  const std::string word(withoutColons(*given));
  EmojiIndex index;
  const auto matches = index.matches(word);
  for (const auto& [item, score] : matches)
    for (const EmojiItem& shown : inTone({*item}, tone, prefs.includeNeutralTone.get()))
      std::printf("%4d  %s\t%s\n", score, shown.emoji.c_str(), shown.name.c_str());
  if (matches.empty()) std::printf("%s\n", noEmojiText(word).c_str());
  return matches.empty() ? 1 : 0;
}

}  // namespace nimbletype::cli
