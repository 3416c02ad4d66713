#include "platform/storage/atomic_file.h"

#include <gmock/gmock.h>

#include "tests/platform/storage/file_store_conformance.h"
#include "tools/stage/temporary_folder.h"

namespace nimbletype {
namespace {

namespace fs = std::filesystem;

struct AtomicFileHarness {
  FileStore& file() { return *atomic; }
  void reopen() { atomic.emplace(folder.path / "file.json"); }
  TemporaryFolder folder;
  std::optional<AtomicFile> atomic{folder.path / "file.json"};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Atomic, FileStoreConformance, AtomicFileHarness);

class AtomicFileTest : public testing::Test {
 protected:
  std::vector<std::string> names() const {
    std::vector<std::string> all;
    for (const auto& entry : fs::directory_iterator(folder.path))
      all.push_back(entry.path().filename().string());
    return all;
  }
  TemporaryFolder folder;
  fs::path path = folder.path / "file.json";
};

TEST_F(AtomicFileTest, LeavesNothingElseBehindAndIsPrivate) {
  AtomicFile file(path);
  EXPECT_TRUE(file.write("one"));
  EXPECT_TRUE(file.write("two"));
  EXPECT_THAT(names(), testing::ElementsAre("file.json"));
  EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(AtomicFileTest, MakesMissingFoldersAndWritesThroughALink) {
  AtomicFile real(folder.path / "missing" / "folders" / "real.json");
  EXPECT_TRUE(real.write("old"));
  fs::create_symlink("missing/folders/real.json", path);
  EXPECT_TRUE(AtomicFile(path).write("new"));
  EXPECT_TRUE(fs::is_symlink(path));
  EXPECT_EQ(real.read(), "new");
}

TEST_F(AtomicFileTest, ReportsAFailureAndLeavesNoTrace) {
  fs::create_directories(path / "in the way");
  AtomicFile file(path);
  EXPECT_FALSE(file.write("x"));
  EXPECT_EQ(file.read(), std::nullopt);
  EXPECT_THAT(names(), testing::ElementsAre("file.json"));
}

TEST_F(AtomicFileTest, SetsAsideUnderAFreeName) {
  AtomicFile file(path);
  for (const std::string content : {"1", "2", "3"}) {
    file.write(content);
    file.setAside();
  }
  EXPECT_THAT(names(), testing::UnorderedElementsAre("file.json.unreadable", "file.json.unreadable-2",
                                                     "file.json.unreadable-3"));
  EXPECT_EQ(AtomicFile(folder.path / "file.json.unreadable-2").read(), "2");
}

TEST_F(AtomicFileTest, ErasesItsOwnTracesAndNothingElse) {
  AtomicFile file(path);
  for (const char* name :
       {"file.json.unreadable", "file.json.unreadable-2", ".file.json.Ab12Cd", "file.json.bak", "other.json"})
    AtomicFile(folder.path / name).write("x");
  fs::create_symlink("real.json", path);
  EXPECT_TRUE(file.write("secret"));
  EXPECT_TRUE(file.erase());
  EXPECT_THAT(names(), testing::UnorderedElementsAre("file.json.bak", "other.json"));
}

}  // namespace
}  // namespace nimbletype
