// Hashes a file as the model store does: file_digest FILE prints the digest, the seconds and the most memory
// the process held, in kilobytes.
#include "engines/store/file_digest.h"

#include <sys/resource.h>

#include <chrono>
#include <cstdio>

int main(int argc, char** argv) {
  if (argc != 2) return std::fputs("usage: file_digest FILE\n", stderr), 2;
  const auto start = std::chrono::steady_clock::now();
  const auto digest = nimbletype::sha256OfFile(argv[1], false);
  const std::chrono::duration<double> spent = std::chrono::steady_clock::now() - start;
  if (!digest) return std::fprintf(stderr, "%s\n", digest.error().message().c_str()), 1;
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  std::printf("%s %.3f %ld\n", digest->c_str(), spent.count(), usage.ru_maxrss);
}
