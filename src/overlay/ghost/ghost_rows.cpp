#include "overlay/ghost/ghost_rows.h"

#include <algorithm>
#include <cmath>

#include "text/text.h"

namespace nimbletype {
namespace {

// No-break spaces do not end a word.
constexpr std::string_view blanks = " \t\r\n";

double roundedWidth(const FontSpec& font, const FontMetrics& metrics, std::string_view text) {
  return std::ceil(metrics.width(font, text));
}

// Of the text up to and with one of its words or characters.
std::size_t lengthOf(std::string_view text, std::string_view word) {
  return static_cast<std::size_t>(word.data() + word.size() - text.data());
}

// The most characters, at least one, whose width is within the room.
std::size_t bytesThatFit(std::string_view word, double room, const FontSpec& font,
                         const FontMetrics& metrics) {
  const auto characters = text::characters(word);
  const auto end =
      std::partition_point(characters.begin() + 1, characters.end(), [&](std::string_view character) {
        return roundedWidth(font, metrics, word.substr(0, lengthOf(word, character))) <= room;
      });
  return lengthOf(word, *(end - 1));
}

// How many words the longest part from the start has that fits. Longer parts are never narrower, and
// measuring is what takes time: so all words are tried first, and then halves.
template <typename Fits>
std::size_t countWhile(std::string_view text, const std::vector<std::string_view>& words, Fits fits) {
  if (words.empty() || fits(text)) return words.size();
  const auto end = std::partition_point(words.begin(), words.end() - 1, [&](std::string_view word) {
    return fits(text.substr(0, lengthOf(text, word)));
  });
  return static_cast<std::size_t>(end - words.begin());
}

}  // namespace

std::vector<std::string_view> ghostWords(std::string_view text) {
  std::vector<std::string_view> words;
  for (std::size_t start = 0; start < text.size();) {
    std::size_t end = text.find_first_not_of(blanks, start);
    end = text.find_first_of(blanks, std::min(end, text.size()));
    end = std::min(text.find_first_not_of(blanks, std::min(end, text.size())), text.size());
    words.push_back(text.substr(start, end - start));
    start = end;
  }
  return words;
}

std::size_t wordsThatFit(std::string_view text, const std::vector<std::string_view>& words, double room,
                         const FontSpec& font, const FontMetrics& metrics) {
  const auto fits = [&](std::string_view part) { return roundedWidth(font, metrics, part) <= room; };
  return countWhile(text, words, fits);
}

std::vector<std::string> breakIntoRows(std::string_view text, double room, const FontSpec& font,
                                       const FontMetrics& metrics) {
  const auto fits = [&](std::string_view part) {
    return roundedWidth(font, metrics, text::trimmedEnd(part)) <= room;
  };
  std::vector<std::string> rows;
  text = text::trimmed(text);
  while (!text.empty()) {
    const auto words = ghostWords(text);
    const std::size_t count = countWhile(text, words, fits);
    const std::size_t bytes =
        count > 0 ? lengthOf(text, words[count - 1]) : bytesThatFit(text, room, font, metrics);
    rows.emplace_back(text::trimmedEnd(text.substr(0, bytes)));
    text = text::trimmedStart(text.substr(bytes));
  }
  return rows;
}

std::string ellipsized(std::string_view row, double room, const FontSpec& font, const FontMetrics& metrics) {
  auto cut = [&] { return std::string(text::trimmedEnd(row)) + "…"; };
  while (!row.empty() && roundedWidth(font, metrics, cut()) > room)
    row.remove_suffix(text::lastCharacter(row).size());
  return cut();
}

}  // namespace nimbletype
