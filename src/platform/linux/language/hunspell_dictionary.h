#pragma once
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class Hunspell;

namespace nimbletype {

// The path without its ending of the dictionary for a language such as "en_US": that language, another
// country's variety of it, else English. None when no dictionary is installed.
std::optional<std::string> findDictionary(std::string_view language,
                                          const std::string& folder = "/usr/share/hunspell");
// "de_AT" from "de_AT.UTF-8"; empty for "C" and "POSIX".
std::string localeLanguage(std::string_view locale);

// One loaded dictionary; belongs to one thread at a time. Words are UTF-8, whatever the dictionary's
// encoding. Apostrophes around a word are quotation marks: they are left as they are.
class HunspellDictionary {
 public:
  explicit HunspellDictionary(const std::string& path);
  ~HunspellDictionary();

  bool isMisspelled(std::string_view word) const;
  // What the word surely was meant to be; a word that may only be half typed has no correction.
  std::optional<std::string> correction(std::string_view word) const;

 private:
  std::optional<std::string> encoded(std::string_view utf8) const;  // none when the encoding lacks a letter
  std::optional<std::string> decoded(const std::string& word) const;
  std::optional<std::string> sureCorrection(std::string_view word,
                                            const std::vector<std::string>& suggestions) const;

  std::unique_ptr<Hunspell> hunspell_;
  std::string encoding_;
};

}  // namespace nimbletype
