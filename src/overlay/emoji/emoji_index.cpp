#include "overlay/emoji/emoji_index.h"

#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <numeric>
#include <optional>

#include "overlay/emoji/emoji_tables.h"
#include "text/text.h"

namespace nimbletype {
namespace {

struct Range {
  UChar32 first, last;
};
constexpr Range ranges[] = {{0x1F300, 0x1F5FF}, {0x1F600, 0x1F64F}, {0x1F680, 0x1F6FF}, {0x1F900, 0x1F9FF},
                            {0x1FA70, 0x1FAFF}, {0x2600, 0x27BF},   {0x2B50, 0x2B55},   {0x231A, 0x23FF}};
constexpr std::string_view emojiPresentation = "\uFE0F";
constexpr int shortcutStart = 500, wordStart = 400, inside = 150;
constexpr std::size_t shortestInside = 3;  // characters
constexpr int tones = 5;

std::string scalarText(UChar32 scalar) {
  char bytes[U8_MAX_LENGTH];
  int length = 0;
  U8_APPEND_UNSAFE(bytes, length, scalar);
  return {bytes, static_cast<std::size_t>(length)};
}

std::string lowerCaseName(UChar32 scalar) {
  char name[128];
  UErrorCode status = U_ZERO_ERROR;
  const int length = u_charName(scalar, U_UNICODE_CHAR_NAME, name, sizeof name, &status);
  return U_SUCCESS(status) ? text::lowercased({name, static_cast<std::size_t>(length)}) : std::string();
}

std::vector<std::string> wordsOf(std::string_view name) {
  std::vector<std::string> words;
  for (std::size_t start = 0; start < name.size();) {
    const std::size_t end = std::min(name.find(' ', start), name.size());
    if (end > start) words.emplace_back(name.substr(start, end - start));
    start = end + 1;
  }
  return words;
}

std::optional<EmojiItem> itemFor(UChar32 scalar) {
  if (!u_hasBinaryProperty(scalar, UCHAR_EMOJI) || u_hasBinaryProperty(scalar, UCHAR_EMOJI_MODIFIER))
    return std::nullopt;
  EmojiItem item{scalarText(scalar), lowerCaseName(scalar), {}, false};
  if (item.name.empty()) return std::nullopt;
  if (!u_hasBinaryProperty(scalar, UCHAR_EMOJI_PRESENTATION)) item.emoji += emojiPresentation;
  item.words = wordsOf(item.name);
  item.takesSkinTone = u_hasBinaryProperty(scalar, UCHAR_EMOJI_MODIFIER_BASE) != 0;
  return item;
}

// Whether the text goes on like this from the start of one of the name's words.
bool hasWordStart(std::string_view name, std::string_view start) {
  for (std::size_t at = name.find(start); at != name.npos; at = name.find(start, at + 1))
    if (at == 0 || name[at - 1] == ' ') return true;
  return false;
}

int nameScore(std::string_view name, std::string_view query, bool isLong) {
  if (name == query) return EmojiIndex::exact;
  if (hasWordStart(name, query)) return wordStart;
  return isLong && name.find(query) != name.npos ? inside : 0;
}

int shortcutScore(std::string_view word, std::string_view query) {
  if (word == query) return EmojiIndex::exact;
  return word.starts_with(query) ? shortcutStart : 0;
}

// As the words of a name are written.
std::string spaced(std::string query) {
  std::ranges::replace(query, '_', ' ');
  return query;
}

}  // namespace

const std::vector<EmojiItem>& EmojiIndex::entries() {
  if (entries_.empty()) build();
  return entries_;
}

void EmojiIndex::build() {
  for (const auto& [first, last] : ranges)
    for (UChar32 scalar = first; scalar <= last; ++scalar)
      if (auto item = itemFor(scalar)) entries_.push_back(std::move(*item));
  for (const auto& [word, emoji] : emojiShortcuts()) shortcuts_.push_back({word, place(emoji, word)});
  ranks_.resize(entries_.size());
  std::iota(ranks_.begin(), ranks_.end(), frequentEmoji().size());
  for (std::size_t i = 0; i < frequentEmoji().size(); ++i) ranks_[place(frequentEmoji()[i], {})] = i;
}

// An emoji younger than the platform's data is known by its shortcut alone.
std::size_t EmojiIndex::place(std::string_view emoji, std::string_view word) {
  const auto found = std::ranges::find(entries_, emoji, &EmojiItem::emoji);
  if (found != entries_.end()) return static_cast<std::size_t>(found - entries_.begin());
  entries_.push_back({std::string(emoji), std::string(word), {std::string(word)}, false});
  return entries_.size() - 1;
}

std::vector<EmojiIndex::Match> EmojiIndex::matches(std::string_view query) {
  if (query.empty()) return {};
  const std::string wanted = text::lowercased(query), wantedName = spaced(wanted);
  const bool isLong = text::characterCount(wanted) >= shortestInside;
  std::vector<int> scores;
  scores.reserve(entries().size());
  for (const EmojiItem& item : entries()) scores.push_back(nameScore(item.name, wantedName, isLong));
  for (const auto& [word, entry] : shortcuts_)
    scores[entry] = std::max(scores[entry], shortcutScore(word, wanted));

  std::vector<std::size_t> found;
  for (std::size_t i = 0; i < scores.size(); ++i)
    if (scores[i] > 0) found.push_back(i);
  std::ranges::sort(found, [&](std::size_t a, std::size_t b) {
    return scores[a] != scores[b] ? scores[a] > scores[b] : ranks_[a] < ranks_[b];
  });
  std::vector<Match> matches;
  matches.reserve(found.size());
  for (const std::size_t i : found) matches.push_back({&entries_[i], scores[i]});
  return matches;
}

std::vector<EmojiItem> EmojiIndex::search(std::string_view query, std::size_t atMost) {
  std::vector<EmojiItem> items;
  for (const Match& match : matches(query)) {
    if (items.size() == atMost) break;
    items.push_back(*match.item);
  }
  return items;
}

std::vector<EmojiItem> EmojiIndex::frequent() {
  std::vector<EmojiItem> items;
  for (const std::string_view emoji : frequentEmoji())
    items.push_back(*std::ranges::find(entries(), emoji, &EmojiItem::emoji));
  return items;
}

std::vector<std::string> EmojiIndex::emoticon(std::string_view text) {
  std::vector<std::string> emoji;
  const auto row = std::ranges::find(emoticonTable(), text, &Emoticon::text);
  if (row == emoticonTable().end()) return emoji;
  for (const std::string_view each : row->emoji)
    if (!each.empty()) emoji.emplace_back(each);
  return emoji;
}

// The modifier asks for a coloured picture by itself; the selector before it would part the two.
std::string EmojiIndex::apply(SkinTone tone, const EmojiItem& item) {
  if (!item.takesSkinTone || tone < 1 || tone > tones) return item.emoji;
  std::string_view base = item.emoji;
  if (base.ends_with(emojiPresentation)) base.remove_suffix(emojiPresentation.size());
  return std::string(base) + scalarText(0x1F3FA + tone);
}

std::vector<EmojiItem> inTone(const std::vector<EmojiItem>& items, SkinTone tone, bool alsoNeutral) {
  std::vector<EmojiItem> toned;
  for (const EmojiItem& item : items) {
    toned.push_back(item);
    toned.back().emoji = EmojiIndex::apply(tone, item);
    if (alsoNeutral && toned.back().emoji != item.emoji) toned.push_back(item);
  }
  return toned;
}

}  // namespace nimbletype
