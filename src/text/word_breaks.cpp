#include <unicode/brkiter.h>
#include <unicode/utext.h>

#include <memory>

#include "text/text.h"

namespace nimbletype::text {
namespace {

enum class Kind { separator, spaced, unspaced };

Kind kindOf(std::string_view character) {
  if (!isLetter(character) && !isDigit(character)) return Kind::separator;
  return isUnspaced(character) ? Kind::unspaced : Kind::spaced;
}

// Expensive to make and good for one thread only; none where the system has no dictionaries.
icu::BreakIterator* dictionary() {
  thread_local const std::unique_ptr<icu::BreakIterator> made = [] {
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::BreakIterator> iterator(
        icu::BreakIterator::createWordInstance(icu::Locale::getRoot(), status));
    return U_SUCCESS(status) ? std::move(iterator) : nullptr;
  }();
  return made.get();
}

void addFromDictionary(std::string_view run, std::vector<std::string_view>& words) {
  UErrorCode status = U_ZERO_ERROR;
  UText text = UTEXT_INITIALIZER;
  utext_openUTF8(&text, run.data(), static_cast<std::int64_t>(run.size()), &status);
  icu::BreakIterator* breaks = dictionary();
  if (breaks) breaks->setText(&text, status);
  utext_close(&text);
  if (!breaks || U_FAILURE(status)) return words.push_back(run);
  std::int32_t start = breaks->first();
  for (auto end = breaks->next(); end != icu::BreakIterator::DONE; start = end, end = breaks->next())
    words.push_back(run.substr(static_cast<std::size_t>(start), static_cast<std::size_t>(end - start)));
}

}  // namespace

std::vector<std::string_view> words(std::string_view s) {
  std::vector<std::string_view> found;
  std::size_t start = 0, pos = 0;
  Kind kind = Kind::separator;
  const auto endRun = [&] {
    const auto run = s.substr(start, pos - start);
    if (kind == Kind::spaced) found.push_back(run);
    if (kind == Kind::unspaced) addFromDictionary(run, found);
    start = pos;
  };
  for (const std::string_view character : characters(s)) {
    if (const Kind next = kindOf(character); next != kind) {
      endRun();
      kind = next;
    }
    pos += character.size();
  }
  endRun();
  return found;
}

}  // namespace nimbletype::text
