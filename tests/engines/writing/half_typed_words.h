#pragma once
#include <string>
#include <string_view>
#include <vector>

namespace nimbletype {

// A sentence cut inside a word, and the letters that complete the word.
struct HalfTypedWord {
  std::string before, rest;
};

// The cuts of a file whose lines are sentences with a "|" wherever the writer pauses inside a word.
std::vector<HalfTypedWord> readHalfTypedWords(const std::string& file);

// The same sentences cut behind each blank: the letters that follow are the whole next word.
std::vector<HalfTypedWord> readWordStarts(const std::string& file);

// Whether `continuation` first completes the word as the sentence has it, and ends it there.
bool completesWord(std::string_view continuation, std::string_view rest);

}  // namespace nimbletype
