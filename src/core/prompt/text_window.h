#pragma once
#include <string>
#include <string_view>

namespace nimbletype {

// Chooses where the raw prompt's text begins. The start is an anchor in the text that moves only in large
// steps: while the user types, prompts share their beginning, so an engine evaluates just what was added.
// When the caret goes back and too little is left behind the anchor, it is set anew.
class TextWindow {
 public:
  static constexpr std::size_t longest = 1500, afterStep = 1000, shortest = 500;  // characters

  // The end of `before` from the anchor on: a part of the argument, at most `longest` characters. `fieldKey`
  // tells fields apart; another field starts anew.
  std::string_view of(std::string_view before, std::string_view fieldKey);

 private:
  bool fits(std::string_view window);
  bool hasShrunk(std::string_view window) const;

  std::string fieldKey_;
  std::string head_;        // the first bytes from the anchor on, to find it again
  std::size_t length_ = 0;  // bytes from the anchor to the caret, last time
  bool fromStart_ = true;   // no anchor yet: the text is used from its beginning
  // The window was counted when it had so many bytes: it had so many characters.
  std::size_t countedBytes_ = 0, counted_ = 0;
};

// Where a window of about `count` characters at the end of `s` may begin: after a line break or a blank near
// there.
std::size_t windowStart(std::string_view s, std::size_t count);

}  // namespace nimbletype
