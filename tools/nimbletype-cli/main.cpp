#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "cli.h"

namespace {

struct Command {
  const char* name;
  int (*run)(nimbletype::cli::Arguments);
  const char* summary;
};

constexpr Command commands[] = {
    {"complete", nimbletype::cli::complete, "write one suggestion for a text"},
    {"doctor", nimbletype::cli::doctor, "show the state of everything the application needs"},
    {"download", nimbletype::cli::download, "fetch the built-in engine's model"},
    {"emoji", nimbletype::cli::emoji, "find emoji by name"},
    {"models", nimbletype::cli::models, "show every engine and the models it offers"},
    {"replay", nimbletype::cli::replay, "run the core over a scripted desktop"},
    {"stats", nimbletype::cli::stats, "show the words that suggestions saved"},
};

int usage(std::FILE* stream, int status) {
  std::fprintf(stream, "usage: nimbletype-cli COMMAND ...\n\n");
  for (const Command& command : commands) std::fprintf(stream, "  %-10s %s\n", command.name, command.summary);
  std::fprintf(stream, "\nnimbletype-cli COMMAND --help tells more.\n");
  return status;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) return usage(stderr, 2);
  const std::vector<std::string> arguments(argv + 2, argv + argc);
  for (const Command& command : commands)
    if (std::strcmp(argv[1], command.name) == 0) return command.run(arguments);
  if (std::strcmp(argv[1], "--help") == 0 || std::strcmp(argv[1], "-h") == 0) return usage(stdout, 0);
  if (std::strcmp(argv[1], "--version") == 0) return std::puts("nimbletype-cli " NIMBLETYPE_VERSION), 0;
  std::fprintf(stderr, "nimbletype-cli: there is no command \"%s\"\n\n", argv[1]);
  return usage(stderr, 2);
}
