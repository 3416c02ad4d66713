#pragma once
#include <span>
#include <string_view>

namespace nimbletype {

// A word people know an emoji by, besides its name.
struct EmojiShortcut {
  std::string_view word, emoji;
};
std::span<const EmojiShortcut> emojiShortcuts();

// What is typed in place of an emoji, and the emoji it may stand for, best first.
struct Emoticon {
  std::string_view text;
  std::string_view emoji[2];  // the second may be empty
};
std::span<const Emoticon> emoticonTable();

// The emoji most often wanted, in this order.
std::span<const std::string_view> frequentEmoji();

}  // namespace nimbletype
