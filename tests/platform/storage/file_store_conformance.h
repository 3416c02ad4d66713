#pragma once
#include <gtest/gtest.h>

#include "platform/storage/file_store.h"

// What every `FileStore` must do. Instantiate with a default-constructible harness that has
//   FileStore& file();
//   void reopen();  // as if the application had been quit and started again
namespace nimbletype {

template <typename Harness>
class FileStoreConformance : public testing::Test {
 protected:
  FileStore& file() { return harness_.file(); }

  Harness harness_;
};

TYPED_TEST_SUITE_P(FileStoreConformance);

TYPED_TEST_P(FileStoreConformance, ReadsBackWhatWasWrittenLast) {
  EXPECT_EQ(this->file().read(), std::nullopt);
  const std::vector<std::string> contents{"first", std::string(100000, 'x'), "",
                                          std::string("\0\xFF\r\n", 4)};
  for (const auto& content : contents) {
    EXPECT_TRUE(this->file().write(content));
    EXPECT_EQ(this->file().read(), content);
    this->harness_.reopen();
    EXPECT_EQ(this->file().read(), content);
  }
}

TYPED_TEST_P(FileStoreConformance, IsAbsentOnceSetAside) {
  this->file().setAside();
  EXPECT_EQ(this->file().read(), std::nullopt);
  for (const std::string content : {"one", "two"}) {
    EXPECT_TRUE(this->file().write(content));
    EXPECT_EQ(this->file().read(), content);
    EXPECT_TRUE(this->file().setAside());
    EXPECT_EQ(this->file().read(), std::nullopt);
  }
}

TYPED_TEST_P(FileStoreConformance, IsAbsentOnceErased) {
  EXPECT_TRUE(this->file().erase()) << "there was none";
  EXPECT_TRUE(this->file().write("one"));
  EXPECT_TRUE(this->file().setAside());
  EXPECT_TRUE(this->file().write("two"));
  EXPECT_TRUE(this->file().erase());
  EXPECT_EQ(this->file().read(), std::nullopt);
  EXPECT_TRUE(this->file().write("three"));
  EXPECT_EQ(this->file().read(), "three");
}

REGISTER_TYPED_TEST_SUITE_P(FileStoreConformance, ReadsBackWhatWasWrittenLast, IsAbsentOnceSetAside,
                            IsAbsentOnceErased);

}  // namespace nimbletype
