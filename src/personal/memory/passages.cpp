#include "personal/memory/passages.h"

#include <openssl/rand.h>

#include <algorithm>
#include <array>
#include <bit>
#include <functional>
#include <numeric>

#include "text/text.h"

namespace nimbletype {
namespace {

constexpr std::size_t shortestTail = passageLimit / 3;
constexpr std::size_t longestIgnoredWord = 3, longestIgnoredUnspacedWord = 1;
constexpr double wordWeight = 2, sameAppBonus = 1.5, daysUntilOld = 60;

std::string randomID() {
  std::array<unsigned char, 16> bytes{};
  RAND_bytes(bytes.data(), static_cast<int>(bytes.size()));
  bytes[6] = static_cast<unsigned char>((bytes[6] & 0x0F) | 0x40);
  bytes[8] = static_cast<unsigned char>((bytes[8] & 0x3F) | 0x80);
  constexpr char digits[] = "0123456789abcdef";
  std::string id;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (i == 4 || i == 6 || i == 8 || i == 10) id += '-';
    id += digits[bytes[i] >> 4];
    id += digits[bytes[i] & 15];
  }
  return id;
}

bool isKeyword(std::string_view word) {
  const bool unspaced = text::isUnspaced(text::firstCharacter(word));
  return text::characterCount(word) > (unspaced ? longestIgnoredUnspacedWord : longestIgnoredWord);
}

// The keywords of a context in a table with room to spare, as a hundred thousand words are looked up in it.
class Wanted {
 public:
  explicit Wanted(const Keywords& words) : slots_(std::bit_ceil(4 * words.size() + 1)) {
    for (const std::size_t word : words) slots_[slotOf(word)] = word;
  }
  std::size_t sharedWith(const Keywords& others) const {
    return static_cast<std::size_t>(std::ranges::count_if(
        others, [this](std::size_t word) { return word != 0 && slots_[slotOf(word)] == word; }));
  }

 private:
  // Where the word is, or would be.
  std::size_t slotOf(std::size_t word) const {
    std::size_t i = word & (slots_.size() - 1);
    while (slots_[i] != 0 && slots_[i] != word) i = (i + 1) & (slots_.size() - 1);
    return i;
  }

  std::vector<std::size_t> slots_;  // 0 for none
};

// Entries may be dated later than the newest one where a clock was wrong.
double recency(WallTime date, WallTime reference) {
  const std::chrono::duration<double, std::chrono::days::period> age = reference - date;
  return std::clamp(1 - age.count() / daysUntilOld, 0.0, 1.0);
}

std::vector<double> scores(const MemoryEntries& entries, const Wanted& context, std::string_view appKey) {
  std::vector<double> all;
  all.reserve(entries.size());
  const WallTime newest = entries.back().date;
  for (const MemoryEntry& entry : entries)
    all.push_back(wordWeight * static_cast<double>(context.sharedWith(entry.keywords)) +
                  (entry.appKey == appKey ? sameAppBonus : 0) + recency(entry.date, newest));
  return all;
}

bool goesOnWith(const MemoryEntry& newest, const MemoryEntry& taken) {
  return newest.appKey == taken.appKey &&
         (newest.text.starts_with(taken.text) || taken.text.starts_with(newest.text));
}

}  // namespace

std::string clippedPassage(std::string_view text) {
  text = text::trimmed(text);
  const auto tail = text::lastCharacters(text, passageLimit);
  if (tail.size() == text.size()) return std::string(text);
  const auto sentenceEnd = tail.find_first_of(".!?\n\r");
  if (sentenceEnd == tail.npos) return std::string(tail);
  const auto sentences = text::trimmed(tail.substr(sentenceEnd + 1));
  return std::string(text::characterCount(sentences) < shortestTail ? tail : sentences);
}

Keywords keywordsOf(std::string_view text) {
  const std::string lower = text::lowercased(text);
  Keywords keywords;
  for (const auto word : text::words(lower))
    if (isKeyword(word)) keywords.push_back(std::hash<std::string_view>()(word));
  std::ranges::sort(keywords);
  const auto repeated = std::ranges::unique(keywords);
  keywords.erase(repeated.begin(), repeated.end());
  return keywords;
}

MemoryEntry newEntry(std::string text, std::string appKey, WallTime date) {
  Keywords keywords = keywordsOf(text);
  return {randomID(), std::move(appKey), std::move(text), date, std::move(keywords), {}};
}

void keep(MemoryEntries& entries, MemoryEntry taken) {
  if (!entries.empty() && goesOnWith(entries.back(), taken)) {
    MemoryEntry& newest = entries.back();
    newest.date = taken.date;
    if (taken.text.size() <= newest.text.size()) return;
    newest.text = std::move(taken.text);
    newest.keywords = std::move(taken.keywords);
    return;
  }
  entries.push_back(std::move(taken));
  if (entries.size() > mostPassages)
    entries.erase(entries.begin(), entries.end() - static_cast<std::ptrdiff_t>(mostPassages));
}

std::vector<std::string> chosenPassages(const MemoryEntries& entries, std::string_view context,
                                        std::string_view appKey, int limit) {
  if (limit < 1 || entries.empty()) return {};
  const auto score = scores(entries, Wanted(keywordsOf(context)), appKey);
  std::vector<std::size_t> order(entries.size());
  std::iota(order.rbegin(), order.rend(), std::size_t{0});  // newest first
  std::ranges::stable_sort(order, std::greater<>(), [&](std::size_t i) { return score[i]; });
  order.resize(std::min(order.size(), static_cast<std::size_t>(limit)));
  std::vector<std::string> chosen;
  chosen.reserve(order.size());
  for (const std::size_t i : order) chosen.emplace_back(text::lastCharacters(entries[i].text, shownPassage));
  return chosen;
}

}  // namespace nimbletype
