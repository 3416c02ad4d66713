#include "tests/whole/random/random_desktop.h"

#include <cstdlib>
#include <iostream>

namespace nimbletype {
namespace {

// Runs differ from day to day; NIMBLETYPE_SEED repeats the one that failed.
std::uint64_t firstSeed() {
  const char* given = std::getenv("NIMBLETYPE_SEED");
  return given ? std::strtoull(given, nullptr, 10) : std::random_device{}();
}

TEST(RandomDesktop, KeepsItsPromisesWhateverHappens) {
  constexpr int desktops = 300, steps = 400;
  const std::uint64_t first = firstSeed();
  std::cout << "NIMBLETYPE_SEED=" << first << '\n';
  int shown = 0, inserted = 0, snapshots = 0;
  for (std::uint64_t seed = first; seed < first + desktops && !testing::Test::HasFailure(); ++seed) {
    SCOPED_TRACE("NIMBLETYPE_SEED=" + std::to_string(seed));
    RandomDesktop desktop(seed);
    for (int i = 0; i < steps && !testing::Test::HasFailure(); ++i) desktop.step();
    shown += desktop.shown;
    inserted += desktop.inserted;
    snapshots += desktop.snapshots;
  }
  std::cout << snapshots << " snapshots, " << shown << " steps with a suggestion, " << inserted
            << " insertions\n";
  if (testing::Test::HasFailure()) return;
  EXPECT_GT(snapshots, desktops);
  EXPECT_GT(shown, desktops);
  EXPECT_GT(inserted, desktops / 4);
}

}  // namespace
}  // namespace nimbletype
