#include "platform/storage/file_copy.h"

#include <gmock/gmock.h>

#include "platform/storage/atomic_file.h"
#include "tools/stage/temporary_folder.h"

namespace nimbletype {
namespace {

namespace fs = std::filesystem;

class FileCopyTest : public testing::Test {
 protected:
  FileCopyTest() { AtomicFile(from).write(content); }
  std::error_code copy(bool cancelled = false) { return copyWhole(from, to, cancelled); }
  // What stands beside the copy, itself included.
  std::vector<std::string> names() const {
    std::vector<std::string> all;
    for (const auto& entry : fs::directory_iterator(to.parent_path()))
      all.push_back(entry.path().filename().string());
    return all;
  }
  TemporaryFolder folder;
  fs::path from = folder.path / "from", to = folder.path / "missing" / "folders" / "to";
  // More than goes at once, and not a multiple of it.
  std::string content = std::string(20'000'000, 'x') + "end";
};

TEST_F(FileCopyTest, CopiesWhole) {
  fs::permissions(from, fs::perms::all);
  AtomicFile(to.parent_path() / ".to.copying").write(content + "more, of a copy that was cut short");
  EXPECT_EQ(copy(), std::error_code());
  EXPECT_EQ(AtomicFile(to).read(), content);
  EXPECT_EQ(fs::status(to).permissions(), fs::perms::owner_read | fs::perms::owner_write);
  EXPECT_THAT(names(), testing::ElementsAre("to"));
}

TEST_F(FileCopyTest, WhatIsThereStays) {
  AtomicFile(to).write("old");
  EXPECT_EQ(copy(), std::errc::file_exists);
  EXPECT_EQ(AtomicFile(to).read(), "old");
  fs::remove(to);
  fs::create_symlink("nowhere", to);
  EXPECT_EQ(copy(), std::errc::file_exists);
  EXPECT_THAT(names(), testing::ElementsAre("to"));
}

TEST_F(FileCopyTest, LeavesNothingHalf) {
  EXPECT_EQ(copy(true), std::errc::operation_canceled);
  EXPECT_THAT(names(), testing::IsEmpty());
  fs::rename(from, folder.path / "real");
  fs::create_symlink("real", from);
  EXPECT_EQ(copy(), std::errc::too_many_symbolic_link_levels);
  EXPECT_THAT(names(), testing::IsEmpty());
}

}  // namespace
}  // namespace nimbletype
