#pragma once
#include <algorithm>
#include <cctype>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

namespace nimbletype {

// A sentence cut inside a word, and the letters that complete the word.
struct HalfTypedWord {
  std::string before, rest;
};

inline bool isLetter(char c) {
  return std::isalpha(static_cast<unsigned char>(c)) != 0;
}

inline std::string lettersAtStart(std::string_view text) {
  return {text.begin(), std::ranges::find_if_not(text, isLetter)};
}

// The cuts of a file whose lines are sentences with a "|" wherever the writer pauses inside a word.
inline std::vector<HalfTypedWord> readHalfTypedWords(const std::string& file) {
  std::vector<HalfTypedWord> words;
  std::ifstream lines(file);
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with('#')) continue;
    for (auto cut = line.find('|'); cut != std::string::npos; cut = line.find('|', cut)) {
      line.erase(cut, 1);
      words.push_back({line.substr(0, cut), lettersAtStart(line.substr(cut))});
    }
  }
  return words;
}

// Whether `continuation` first completes the word as the sentence has it, and ends it there.
inline bool completesWord(std::string_view continuation, std::string_view rest) {
  return continuation.starts_with(rest) && lettersAtStart(continuation).size() == rest.size();
}

}  // namespace nimbletype
