#include "platform/linux/language/hunspell_dictionary.h"

#include <iconv.h>

#include <cstdint>
#include <filesystem>
#include <hunspell.hxx>

#include "platform/linux/language/sure_correction.h"

namespace nimbletype {

namespace {

namespace fs = std::filesystem;

bool hasDictionary(const fs::path& base) {
  std::error_code error;
  return fs::exists(base.string() + ".aff", error) && fs::exists(base.string() + ".dic", error);
}

// The first dictionary, by name, of a language such as "de": de_AT, de_CH, de_DE.
std::optional<std::string> anyVariety(const fs::path& folder, const std::string& language) {
  std::optional<std::string> first;
  std::error_code error;
  for (const auto& entry : fs::directory_iterator(folder, error)) {
    const std::string stem = entry.path().stem().string();
    if (entry.path().extension() != ".dic" || !stem.starts_with(language + "_")) continue;
    if (hasDictionary(folder / stem) && (!first || (folder / stem).string() < *first)) first = folder / stem;
  }
  return first;
}

std::optional<std::string> converted(std::string_view text, const char* to, const char* from) {
  const iconv_t converter = iconv_open(to, from);
  if (reinterpret_cast<std::intptr_t>(converter) == -1) return std::nullopt;
  std::string out(text.size() * 4 + 4, '\0');
  char* input = const_cast<char*>(text.data());
  char* output = out.data();
  std::size_t inputLeft = text.size(), outputLeft = out.size();
  const bool done =
      iconv(converter, &input, &inputLeft, &output, &outputLeft) != static_cast<std::size_t>(-1);
  iconv_close(converter);
  if (!done) return std::nullopt;
  out.resize(out.size() - outputLeft);
  return out;
}

// A word with the quotation marks around it set apart and its apostrophes written as dictionaries do.
struct Parts {
  std::string_view before, after;
  std::string word;
  bool curly = false;
};

constexpr std::string_view curlyApostrophe = "’";

std::size_t apostropheAt(std::string_view s, bool atEnd) {
  for (std::string_view mark : {std::string_view("'"), curlyApostrophe})
    if (atEnd ? s.ends_with(mark) : s.starts_with(mark)) return mark.size();
  return 0;
}

void replaceAll(std::string& s, std::string_view from, std::string_view to) {
  for (std::size_t at = s.find(from); at != std::string::npos; at = s.find(from, at + to.size()))
    s.replace(at, from.size(), to);
}

Parts split(std::string_view word) {
  Parts parts;
  std::string_view inner = word;
  while (const std::size_t size = apostropheAt(inner, false)) inner.remove_prefix(size);
  parts.before = word.substr(0, word.size() - inner.size());
  const std::size_t start = parts.before.size();
  while (const std::size_t size = apostropheAt(inner, true)) inner.remove_suffix(size);
  parts.after = word.substr(start + inner.size());
  parts.word = inner;
  parts.curly = inner.find(curlyApostrophe) != std::string_view::npos;
  replaceAll(parts.word, curlyApostrophe, "'");
  return parts;
}

}  // namespace

std::optional<std::string> findDictionary(std::string_view language, const std::string& folder) {
  const fs::path base(folder);
  for (const std::string& name : {std::string(language), std::string("en_US"), std::string("en_GB")}) {
    if (name.empty()) continue;
    if (hasDictionary(base / name)) return base / name;
    if (auto variety = anyVariety(base, name.substr(0, name.find('_')))) return variety;
  }
  return std::nullopt;
}

std::string localeLanguage(std::string_view locale) {
  const std::string_view language = locale.substr(0, locale.find_first_of(".@"));
  return language == "C" || language == "POSIX" ? std::string() : std::string(language);
}

HunspellDictionary::HunspellDictionary(const std::string& path)
    : hunspell_(std::make_unique<Hunspell>((path + ".aff").c_str(), (path + ".dic").c_str())),
      encoding_(hunspell_->get_dict_encoding()) {}

HunspellDictionary::~HunspellDictionary() = default;

std::optional<std::string> HunspellDictionary::encoded(std::string_view utf8) const {
  if (encoding_ == "UTF-8") return std::string(utf8);
  return converted(utf8, encoding_.c_str(), "UTF-8");
}

std::optional<std::string> HunspellDictionary::decoded(const std::string& word) const {
  return encoding_ == "UTF-8" ? word : converted(word, "UTF-8", encoding_.c_str());
}

// None when the word may just as well be the beginning of a longer one.
std::optional<std::string> HunspellDictionary::sureCorrection(
    std::string_view word, const std::vector<std::string>& suggestions) const {
  std::optional<std::string> sure;
  for (const std::string& bytes : suggestions) {
    auto suggestion = decoded(bytes);
    if (!suggestion) continue;
    if (suggestion->starts_with(word)) return std::nullopt;
    if (!sure && isSureCorrection(word, *suggestion)) sure = std::move(suggestion);
  }
  return sure;
}

bool HunspellDictionary::isMisspelled(std::string_view word) const {
  const Parts parts = split(word);
  // A word with letters of another script is not this dictionary's business.
  const auto bytes = encoded(parts.word);
  return !parts.word.empty() && bytes && !hunspell_->spell(*bytes);
}

std::optional<std::string> HunspellDictionary::correction(std::string_view word) const {
  const Parts parts = split(word);
  const auto bytes = encoded(parts.word);
  if (!bytes) return std::nullopt;
  auto best = sureCorrection(parts.word, hunspell_->suggest(*bytes));
  if (!best) return std::nullopt;
  if (parts.curly) replaceAll(*best, "'", curlyApostrophe);
  return std::string(parts.before) + *best + std::string(parts.after);
}

}  // namespace nimbletype
