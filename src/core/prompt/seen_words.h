#pragma once
#include <initializer_list>
#include <string>
#include <string_view>

namespace nimbletype {

// The words of some texts, in any case. They are kept for as long as this is.
class SeenWords {
 public:
  explicit SeenWords(std::initializer_list<std::string_view> texts);
  // Whether it stands there as a word of its own.
  bool contains(std::string_view word) const;

 private:
  std::string text_;
};

}  // namespace nimbletype
