#include <gmock/gmock.h>

#include "core/app/migration/earlier_files.h"
#include "core/app/migration/earlier_values.h"
#include "platform/scripted/storage/memory_defaults_store.h"

namespace nimbletype {
namespace {

using testing::ElementsAre;
using testing::Pair;
using Paths = std::set<std::filesystem::path>;

TEST(MigrationPlan, TellsWhichFilesGo) {
  struct Row {
    Paths earlier, taken, carried;
  };
  const Paths model{"Models/a.gguf"}, marker{"Models/a.gguf.verified"},
      both{"Models/a.gguf", "Models/a.gguf.verified"};
  const std::vector<Row> table{
      {{"rules.json", "deep/er/file"}, {}, {"rules.json", "deep/er/file"}},
      {{"rules.json", "stats.json"}, {"rules.json"}, {"stats.json"}},
      {{"settings.json", "memory.sealed", "memory.sealed.unreadable"}, {}, {}},
      {{"Models/.incoming-a.gguf", "Models/.partial-a.gguf", ".DS_Store", ".git/HEAD"}, {}, {}},
      {both, {}, both},
      {both, marker, model},
      {both, model, {}},
      {marker, {}, {}},
  };
  for (const auto& [earlier, taken, carried] : table) {
    std::vector<EarlierFile> files;
    for (const auto& path : earlier) files.push_back({path, 1});
    Paths result;
    for (const auto& file : filesToCarry(files, taken)) result.insert(file.path);
    EXPECT_EQ(result, carried) << *earlier.begin();
  }
  EXPECT_THAT(filesToCarry({{"a.gguf", 9}, {"a.gguf.verified", 1}}, {}),
              ElementsAre(EarlierFile{"a.gguf.verified", 1}, EarlierFile{"a.gguf", 9}))
      << "a model that stands there without its marker would have to be checked again";
}

TEST(MigrationPlan, TellsWhichSettingsGo) {
  MemoryDefaultsStore earlier, ours;
  const std::vector<std::pair<std::string, DefaultsValue>> all{
      {"isEnabled", true},
      {"isEnabled2", true},
      {"creativity", 0.5},
      {"keyHintsShown", 3.5},
      {"length", std::string("long")},
      {"engine", std::string("steam")},
      {"memoryEnabled", std::string("yes")},
      {"showKeyHint", false},
      {"toggleAppKey", DataValue{"null"}},
      {"migratedFromPlumlet", true},
  };
  for (const auto& [key, value] : all) earlier.set(key, value);
  ours.set("showKeyHint", true);
  EXPECT_THAT(settingsToTake(earlier, ours),
              ElementsAre(Pair("creativity", DefaultsValue(0.5)), Pair("isEnabled", DefaultsValue(true)),
                          Pair("length", DefaultsValue("long")),
                          Pair("toggleAppKey", DefaultsValue(DataValue{"null"}))));
}

TEST(MigrationPlan, TellsWhatBecomesOfTheMemory) {
  const FoundSecret key = std::string(32, 'k'), other = std::string(32, 'o'), stub = "short", none,
                    locked = std::unexpected(SecretFailure::locked),
                    gone = std::unexpected(SecretFailure::unavailable);
  const std::vector<std::tuple<FoundSecret, FoundSecret, MemoryMove>> table{
      {key, none, MemoryMove::keyThenFile}, {key, key, MemoryMove::file},
      {key, other, MemoryMove::setAside},   {none, none, MemoryMove::setAside},
      {stub, none, MemoryMove::setAside},   {none, key, MemoryMove::setAside},
      {locked, none, MemoryMove::nothing},  {gone, gone, MemoryMove::nothing},
      {key, locked, MemoryMove::nothing},
  };
  for (std::size_t row = 0; row < table.size(); ++row) {
    const auto& [earlier, ours, move] = table[row];
    EXPECT_EQ(memoryMove(earlier, ours), move) << "row " << row;
  }
}

}  // namespace
}  // namespace nimbletype
