#include "tests/engines/writing/half_typed_words.h"

#include <cctype>
#include <fstream>

namespace nimbletype {
namespace {

bool isLetter(char c) {
  return std::isalpha(static_cast<unsigned char>(c)) != 0;
}

std::string lettersAt(std::string_view line, std::size_t start) {
  std::size_t end = start;
  while (end < line.size() && isLetter(line[end])) ++end;
  return std::string(line.substr(start, end - start));
}

}  // namespace

std::vector<HalfTypedWord> readHalfTypedWords(const std::string& file) {
  std::vector<HalfTypedWord> words;
  std::ifstream lines(file);
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with('#')) continue;
    std::string before;
    for (std::size_t i = 0; i < line.size(); ++i) {
      if (line[i] == '|')
        words.push_back({before, lettersAt(line, i + 1)});
      else
        before += line[i];
    }
  }
  return words;
}

std::vector<HalfTypedWord> readWordStarts(const std::string& file) {
  std::vector<HalfTypedWord> words;
  std::ifstream lines(file);
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with('#')) continue;
    std::erase(line, '|');
    for (auto blank = line.find(' '); blank != std::string::npos; blank = line.find(' ', blank + 1))
      words.push_back({line.substr(0, blank + 1), lettersAt(line, blank + 1)});
  }
  return words;
}

bool completesWord(std::string_view continuation, std::string_view rest) {
  return continuation.starts_with(rest) &&
         !(continuation.size() > rest.size() && isLetter(continuation[rest.size()]));
}

}  // namespace nimbletype
