// Continues each prompt it reads and says what that took; the side of the built-in engine in compare_runtime.
//   typing_bench MODEL THREADS     a line of input: MAX_TOKENS HEAL PROMPT     a line of output: MS TOKENS
//   REUSED
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>

#include "engines/writing/text_generation.h"

int main(int argc, char** argv) {
  using namespace nimbletype;
  if (argc != 3) return std::fprintf(stderr, "usage: typing_bench MODEL THREADS\n"), 2;
  const auto model = LlamaModel::load(argv[1], {.threads = std::atoi(argv[2])});
  if (!model) return std::fprintf(stderr, "%s\n", model.error().message().c_str()), 1;
  GenerationOrder order;
  order.request.temperature = 0;
  while (std::cin >> order.request.maxTokens >> order.request.healLast) {
    std::cin.ignore(1);
    std::getline(std::cin, order.request.rawPrompt);
    const auto start = std::chrono::steady_clock::now();
    const auto output = generate(**model, order, {});
    const std::chrono::duration<double, std::milli> spent = std::chrono::steady_clock::now() - start;
    if (!output) return std::fprintf(stderr, "%s\n", output.error().message().c_str()), 1;
    std::cout << spent.count() << ' ' << output->generatedTokens << ' ' << output->reusedTokens << std::endl;
  }
}
