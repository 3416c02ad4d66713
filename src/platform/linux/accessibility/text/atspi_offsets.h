#pragma once
#include <cstdint>
#include <string_view>
#include <vector>

namespace nimbletype {

// Translates between an application's text offsets and UTF-16 units. Toolkits that count code points differ
// from UTF-16 by one for each code point beyond U+FFFF. Only the text around the caret is looked at: before
// it the two numberings are taken to run in step, which keeps all offsets around the caret in agreement with
// each other.
class AtspiOffsets {
 public:
  // The toolkit counts UTF-16 units itself.
  AtspiOffsets() = default;
  // `text` is the UTF-8 text that starts at the code point offset `start`.
  AtspiOffsets(std::int64_t start, std::string_view text);

  std::int64_t toUtf16(std::int64_t offset) const;
  // A unit inside a character belongs to that character.
  std::int64_t fromUtf16(std::int64_t units) const;
  // The end of a range: a unit inside a character reaches to that character's end.
  std::int64_t endFromUtf16(std::int64_t units) const;

 private:
  std::vector<std::int64_t> wide_;  // offsets of the code points that take two units, ascending
};

}  // namespace nimbletype
