#include <unicode/brkiter.h>
#include <unicode/utext.h>

#include <memory>
#include <span>

#include "text/character_breaks.h"
#include "text/code_points.h"
#include "text/text.h"

// Text is cut in two steps. Most neighbouring code points never share a character, which a property look-up
// decides; what lies between two such sure boundaries is a stretch, mostly one code point long. Only
// stretches that are neither that nor a base with marks go to ICU's break iterator.
namespace nimbletype::text {
namespace {

bool isAsciiAt(std::string_view s, std::size_t pos) {
  return static_cast<unsigned char>(s[pos]) < 0x80;
}

std::size_t stretchEnd(std::string_view s, std::size_t start) {
  if (start + 1 < s.size() && isAsciiAt(s, start) && isAsciiAt(s, start + 1) && s[start] != '\r')
    return start + 1;
  CodePoint left = codePointAt(s, start);
  std::size_t end = start + left.size;
  while (end < s.size()) {
    const CodePoint right = codePointAt(s, end);
    if (surelyApart(left.value, right.value)) break;
    end += right.size;
    left = right;
  }
  return end;
}

std::size_t stretchStart(std::string_view s, std::size_t end) {
  if (end > 1 && isAsciiAt(s, end - 1) && isAsciiAt(s, end - 2) && s[end - 1] != '\n') return end - 1;
  CodePoint right = codePointBefore(s, end);
  std::size_t start = end - right.size;
  while (start > 0) {
    const CodePoint left = codePointBefore(s, start);
    if (surelyApart(left.value, right.value)) break;
    start -= left.size;
    right = left;
  }
  return start;
}

// ICU's iterator is costly to make and cheap to point at another text, so each thread keeps one.
class Segmenter {
 public:
  Segmenter() {
    UErrorCode status = U_ZERO_ERROR;
    iterator_.reset(icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    if (U_FAILURE(status)) iterator_.reset();
  }
  ~Segmenter() { utext_close(&text_); }
  Segmenter(const Segmenter&) = delete;
  Segmenter& operator=(const Segmenter&) = delete;

  // Where each character of the stretch ends; valid until the next call.
  std::span<const std::size_t> ends(std::string_view stretch) {
    ends_.clear();
    appendInnerEnds(stretch);
    if (ends_.empty() || ends_.back() != stretch.size()) ends_.push_back(stretch.size());
    return ends_;
  }

 private:
  void appendInnerEnds(std::string_view stretch) {
    if (!iterator_) return;
    UErrorCode status = U_ZERO_ERROR;
    utext_openUTF8(&text_, stretch.data(), static_cast<std::int64_t>(stretch.size()), &status);
    iterator_->setText(&text_, status);
    if (U_FAILURE(status)) return;
    for (auto end = iterator_->next(); end != icu::BreakIterator::DONE; end = iterator_->next())
      ends_.push_back(static_cast<std::size_t>(end));
  }

  std::unique_ptr<icu::BreakIterator> iterator_;
  UText text_ = UTEXT_INITIALIZER;
  std::vector<std::size_t> ends_;
};

std::span<const std::size_t> characterEnds(std::string_view stretch) {
  thread_local Segmenter segmenter;
  return segmenter.ends(stretch);
}

std::size_t positionAfter(std::string_view s, std::size_t count) {
  if (s.size() <= count) return s.size();
  if (isBytePerCharacter(s.substr(0, count + 1))) return count;
  std::size_t pos = 0;
  while (count > 0 && pos < s.size()) {
    const auto end = stretchEnd(s, pos);
    const auto stretch = s.substr(pos, end - pos);
    if (isOneCharacter(stretch)) {
      --count;
    } else {
      const auto ends = characterEnds(stretch);
      if (count < ends.size()) return pos + ends[count - 1];
      count -= ends.size();
    }
    pos = end;
  }
  return pos;
}

// Walks from the end only as far as needed.
std::size_t positionOfLast(std::string_view s, std::size_t count) {
  if (s.size() <= count) return 0;
  if (isBytePerCharacter(s.substr(s.size() - count - 1))) return s.size() - count;
  std::size_t pos = s.size();
  while (count > 0 && pos > 0) {
    const auto start = stretchStart(s, pos);
    const auto stretch = s.substr(start, pos - start);
    if (isOneCharacter(stretch)) {
      --count;
    } else {
      const auto ends = characterEnds(stretch);
      if (count < ends.size()) return start + ends[ends.size() - count - 1];
      count -= ends.size();
    }
    pos = start;
  }
  return pos;
}

}  // namespace

std::size_t characterCount(std::string_view s) {
  if (isBytePerCharacter(s)) return s.size();
  std::size_t count = 0;
  for (std::size_t pos = 0; pos < s.size();) {
    const auto end = stretchEnd(s, pos);
    const auto stretch = s.substr(pos, end - pos);
    count += isOneCharacter(stretch) ? 1 : characterEnds(stretch).size();
    pos = end;
  }
  return count;
}

std::vector<std::string_view> characters(std::string_view s) {
  std::vector<std::string_view> all;
  all.reserve(s.size());
  for (std::size_t pos = 0; pos < s.size();) {
    const auto start = pos;
    const auto stretch = s.substr(start, stretchEnd(s, start) - start);
    if (isOneCharacter(stretch)) {
      all.push_back(stretch);
      pos += stretch.size();
      continue;
    }
    for (const auto end : characterEnds(stretch)) {
      all.push_back(s.substr(pos, start + end - pos));
      pos = start + end;
    }
  }
  return all;
}

std::string_view firstCharacters(std::string_view s, std::size_t count) {
  return s.substr(0, positionAfter(s, count));
}

std::string_view lastCharacters(std::string_view s, std::size_t count) {
  return s.substr(positionOfLast(s, count));
}

std::string_view dropFirst(std::string_view s, std::size_t count) {
  return s.substr(positionAfter(s, count));
}

std::string_view firstCharacter(std::string_view s) {
  return firstCharacters(s, 1);
}

std::string_view lastCharacter(std::string_view s) {
  return lastCharacters(s, 1);
}

std::string clipped(std::string_view s, std::size_t count) {
  const auto end = positionAfter(s, count);
  std::string out(s.substr(0, end));
  if (end < s.size()) out += "…";
  return out;
}

}  // namespace nimbletype::text
