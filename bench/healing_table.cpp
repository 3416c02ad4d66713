// How often half-typed words are completed as their sentences have them, with and without writing the word
// again from its start.   healing_table [MODEL] [SENTENCES] [-v]
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "engines/writing/text_generation.h"
#include "tests/engines/writing/half_typed_words.h"

namespace nimbletype {
namespace {

struct Row {
  int words = 0, plain = 0, healed = 0;
  double plainMilliseconds = 0, healedMilliseconds = 0;

  void add(const Row& other) {
    words += other.words;
    plain += other.plain;
    healed += other.healed;
    plainMilliseconds += other.plainMilliseconds;
    healedMilliseconds += other.healedMilliseconds;
  }
};

GenerationOutput continued(LlamaModel& model, const std::string& text, bool heal) {
  GenerationOrder order;
  order.request.rawPrompt = text;
  order.request.maxTokens = 6;
  order.request.temperature = 0;
  order.request.healLast = heal;
  order.request.spaceTyped = heal && text.ends_with(' ');
  auto output = generate(model, order, {});
  return output ? *output : GenerationOutput{};
}

Row tried(LlamaModel& model, const HalfTypedWord& word, bool verbose) {
  const auto plain = continued(model, word.before, false);
  const auto healed = continued(model, word.before, true);
  Row row{1, completesWord(plain.text, word.rest), completesWord(healed.text, word.rest),
          plain.promptMilliseconds + plain.generationMilliseconds,
          healed.promptMilliseconds + healed.generationMilliseconds};
  if (verbose && !row.healed)
    std::printf("%s|%s   plain: \"%s\"  healed: \"%s\"\n", word.before.c_str(), word.rest.c_str(),
                plain.text.c_str(), healed.text.c_str());
  return row;
}

// The sentences cut behind each blank: the letters that follow are the whole next word.
std::vector<HalfTypedWord> readWordStarts(const std::string& file) {
  std::vector<HalfTypedWord> words;
  std::ifstream lines(file);
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with('#')) continue;
    std::erase(line, '|');
    for (auto blank = line.find(' '); blank != std::string::npos; blank = line.find(' ', blank + 1))
      words.push_back({line.substr(0, blank + 1), lettersAtStart(line.substr(blank + 1))});
  }
  return words;
}

std::size_t typedLetters(std::string_view before) {
  return before.size() - (before.rfind(' ') + 1);
}

void print(const char* name, const Row& row) {
  if (row.words == 0) return;
  std::printf("%-14s %5d  %5.1f %%  %5.1f %%  %8.2f %8.2f\n", name, row.words, 100.0 * row.plain / row.words,
              100.0 * row.healed / row.words, row.plainMilliseconds / row.words,
              row.healedMilliseconds / row.words);
}

int run(const std::string& modelFile, const std::string& sentences, bool verbose) {
  auto model = LlamaModel::load(modelFile, {});
  if (!model) {
    std::fprintf(stderr, "%s: %s\n", modelFile.c_str(), model.error().message().c_str());
    return 1;
  }
  Row rows[5], all, blank;
  for (const auto& word : readHalfTypedWords(sentences)) {
    const auto trial = tried(**model, word, verbose);
    rows[std::min<std::size_t>(typedLetters(word.before), 5) - 1].add(trial);
    all.add(trial);
  }
  for (const auto& word : readWordStarts(sentences)) blank.add(tried(**model, word, false));
  std::printf("letters typed  words    plain   healed  plain ms  healed ms\n");
  const char* names[] = {"1", "2", "3", "4", "5 and more"};
  for (int i = 0; i < 5; ++i) print(names[i], rows[i]);
  print("all", all);
  print("only a blank", blank);
  return all.words > 0 ? 0 : 1;
}

}  // namespace
}  // namespace nimbletype

int main(int argc, char** argv) {
  std::vector<std::string> files = {"models/starter/starter-q8_0.gguf",
                                    "tests/engines/writing/half_typed_words.txt"};
  bool verbose = false;
  for (int i = 1, file = 0; i < argc; ++i) {
    if (std::strcmp(argv[i], "-v") == 0)
      verbose = true;
    else if (file < 2)
      files[file++] = argv[i];
  }
  return nimbletype::run(files[0], files[1], verbose);
}
