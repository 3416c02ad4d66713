#include "input/context/context_cleaning.h"

#include <algorithm>

#include "text/text.h"

namespace nimbletype {
namespace {

constexpr std::size_t leastWords = 2, leastUnspaced = 4;
// Shorter lines of the field turn up elsewhere by chance.
constexpr std::size_t leastOwnBytes = 12;
constexpr std::size_t mostLines = 400;

// Object replacement, zero-width and directional characters, byte order mark.
bool isInvisible(std::string_view character) {
  static constexpr std::string_view invisible[] = {"\u200B", "\u200C", "\u200D", "\u200E",
                                                   "\u200F", "\u2060", "\uFEFF", "\uFFFC"};
  if (character.size() == 1) return static_cast<unsigned char>(character[0]) < 0x20 || character == "\x7F";
  return std::ranges::find(invisible, character) != std::end(invisible);
}

std::vector<std::string_view> linesOf(std::string_view s) {
  std::vector<std::string_view> lines;
  while (true) {
    const std::size_t end = s.find_first_of("\n\r");
    lines.push_back(s.substr(0, end));
    if (end == std::string_view::npos) return lines;
    s.remove_prefix(end + 1);
  }
}

// The lines of a text are taken to be spread evenly over its frame.
TopLeftRect rowOf(const TopLeftRect& frame, std::size_t index, std::size_t count) {
  const double height = frame.height / static_cast<double>(count);
  return {frame.x, frame.y + height * static_cast<double>(index), frame.width, height};
}

void addLines(const PlacedText& piece, std::vector<PlacedText>& lines) {
  const auto rows = linesOf(piece.text);
  for (std::size_t i = 0; i < rows.size() && lines.size() < mostLines; ++i) {
    std::string line = cleanLine(rows[i]);
    if (!isFragment(line)) lines.push_back({std::move(line), rowOf(piece.frame, i, rows.size())});
  }
}

// Links are told again inside the paragraph they belong to.
void dropRepeated(std::vector<PlacedText>& lines) {
  std::vector<bool> repeated(lines.size());
  for (std::size_t i = 0; i < lines.size(); ++i)
    for (std::size_t j = 0; j < lines.size() && !repeated[i]; ++j) {
      const bool isPart = lines[j].text.find(lines[i].text) != std::string::npos;
      const bool isShorter = lines[i].text.size() < lines[j].text.size();
      repeated[i] = i != j && isPart && (isShorter || j < i);
    }
  std::size_t at = 0;
  std::erase_if(lines, [&](const PlacedText&) { return repeated[at++]; });
}

// From the top to the bottom, and from the left to the right.
bool readsBefore(const PlacedText& a, const PlacedText& b) {
  return a.frame.y != b.frame.y ? a.frame.y < b.frame.y : a.frame.x < b.frame.x;
}

}  // namespace

std::string cleanLine(std::string_view line) {
  std::string clean;
  bool blank = false;
  for (const std::string_view character : text::characters(line)) {
    if (text::isWhitespace(character)) {
      blank = true;
    } else if (!isInvisible(character)) {
      if (blank && !clean.empty()) clean += ' ';
      blank = false;
      clean += character;
    }
  }
  return clean;
}

bool isFragment(std::string_view line) {
  std::size_t letters = 0, unspaced = 0, others = 0;
  for (const std::string_view character : text::characters(line)) {
    if (text::isUnspaced(character)) ++unspaced;
    if (text::isLetter(character))
      ++letters;
    else if (!text::isWhitespace(character))
      ++others;
  }
  if (letters <= others) return true;
  return unspaced < leastUnspaced && text::wordCount(line) < leastWords;
}

std::vector<PlacedText> contextLines(std::span<const PlacedText> pieces) {
  std::vector<PlacedText> lines;
  for (const PlacedText& piece : pieces) addLines(piece, lines);
  dropRepeated(lines);
  std::ranges::stable_sort(lines, readsBefore);
  return lines;
}

std::vector<PlacedText> withoutOwnText(std::vector<PlacedText> lines, std::string_view fieldText) {
  const std::string whole = cleanLine(fieldText);
  std::vector<std::string> own;
  for (const std::string_view line : linesOf(fieldText))
    if (std::string clean = cleanLine(line); clean.size() >= leastOwnBytes) own.push_back(std::move(clean));
  std::erase_if(lines, [&](const PlacedText& line) {
    if (whole.find(line.text) != std::string::npos) return true;
    return std::ranges::any_of(own, [&](const auto& o) { return line.text.find(o) != std::string::npos; });
  });
  return lines;
}

std::string usefulCopy(std::string_view copied, std::string_view fieldText, std::size_t limit) {
  const std::string_view text = text::trimmed(text::firstCharacters(copied, limit));
  const std::string clean = cleanLine(text);
  if (text::characterCount(clean) < 2 || cleanLine(fieldText).find(clean) != std::string::npos) return {};
  return std::string(text);
}

}  // namespace nimbletype
