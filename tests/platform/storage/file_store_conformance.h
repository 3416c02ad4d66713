#pragma once
#include <gtest/gtest.h>

#include "platform/storage/file_store.h"

// What every `FileStore` must do. Instantiate with a default-constructible harness that has
//   FileStore& file();
//   void reopen();  // as if the application had been quit and started again
namespace nimbletype {

template <typename Harness>
struct FileStoreConformance : testing::Test, Harness {};
TYPED_TEST_SUITE_P(FileStoreConformance);

TYPED_TEST_P(FileStoreConformance, ReadsBackWhatWasWrittenLast) {
  EXPECT_EQ(this->file().read(), std::nullopt);
  for (const auto& content :
       {std::string("first"), std::string(100000, 'x'), std::string(), std::string("\0\xFF\r\n", 4)}) {
    EXPECT_TRUE(this->file().write(content));
    EXPECT_EQ(this->file().read(), content);
    this->reopen();
    EXPECT_EQ(this->file().read(), content);
  }
}

TYPED_TEST_P(FileStoreConformance, IsAbsentOnceSetAsideOrErased) {
  this->file().setAside();
  EXPECT_TRUE(this->file().erase()) << "there was none";
  EXPECT_EQ(this->file().read(), std::nullopt);
  for (const auto leave :
       {&FileStore::setAside, &FileStore::setAside, &FileStore::erase, &FileStore::erase}) {
    EXPECT_TRUE(this->file().write("content"));
    EXPECT_EQ(this->file().read(), "content");
    EXPECT_TRUE((this->file().*leave)());
    EXPECT_EQ(this->file().read(), std::nullopt);
  }
}

REGISTER_TYPED_TEST_SUITE_P(FileStoreConformance, ReadsBackWhatWasWrittenLast, IsAbsentOnceSetAsideOrErased);

}  // namespace nimbletype
