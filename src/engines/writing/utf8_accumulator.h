#pragma once
#include <string>
#include <string_view>

namespace nimbletype {

// Joins the bytes of tokens to text. A character whose bytes have not all come yet is held back.
class Utf8Accumulator {
 public:
  void append(std::string_view bytes);
  const std::string& text() const { return text_; }

 private:
  std::string bytes_;
  std::string text_;
};

}  // namespace nimbletype
