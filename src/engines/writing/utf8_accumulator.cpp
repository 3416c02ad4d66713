#include "engines/writing/utf8_accumulator.h"

#include "text/text.h"

namespace nimbletype {

void Utf8Accumulator::append(std::string_view bytes) {
  constexpr std::string_view replacement = "\uFFFD";
  bytes_ += bytes;
  text_ = text::repaired(bytes_);
  while (text_.ends_with(replacement)) text_.resize(text_.size() - replacement.size());
}

}  // namespace nimbletype
