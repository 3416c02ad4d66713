#pragma once
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace nimbletype {

struct EmojiItem {
  std::string emoji;  // one scalar, with U+FE0F where it would be drawn as text without
  std::string name;   // the Unicode name, lower case
  std::vector<std::string> words;
  bool takesSkinTone = false;
  bool operator==(const EmojiItem&) const = default;
};

// The skin tones from light to dark are numbered 1 to 5; any other number is none.
using SkinTone = int;

// Every emoji of one scalar, to be found by name. Built when it is first asked, from the Unicode data of the
// platform. Main thread only.
class EmojiIndex {
 public:
  struct Match {
    const EmojiItem* item = nullptr;  // lives as long as the index
    int score = 0;
  };
  static constexpr int exact = 1000;

  // Best first; among equals the frequent ones first. An empty query finds nothing.
  std::vector<Match> matches(std::string_view query);
  std::vector<EmojiItem> search(std::string_view query, std::size_t atMost = noLimit);
  // The emoji most often wanted.
  std::vector<EmojiItem> frequent();
  // The emoji that a text such as ":)" stands for, best first; empty for any other text. Needs no index.
  static std::vector<std::string> emoticon(std::string_view text);

  static std::string apply(SkinTone tone, const EmojiItem& item);

  const std::vector<EmojiItem>& entries();

 private:
  static constexpr std::size_t noLimit = std::numeric_limits<std::size_t>::max();
  struct Shortcut {
    std::string_view word;
    std::size_t entry;
  };

  void build();
  std::size_t place(std::string_view emoji, std::string_view word);

  std::vector<EmojiItem> entries_;
  std::vector<std::size_t> ranks_;  // of each entry among equals
  std::vector<Shortcut> shortcuts_;
};

// Each item in the tone, followed by itself in yellow where that is wanted too.
std::vector<EmojiItem> inTone(const std::vector<EmojiItem>& items, SkinTone tone, bool alsoNeutral);

}  // namespace nimbletype
