#pragma once
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "platform/storage/defaults_store.h"

// What every `DefaultsStore` must do. Instantiate with a default-constructible harness that has
//   DefaultsStore& store();
//   void reopen();  // as if the application had been quit and started again
namespace nimbletype {

template <typename Harness>
struct DefaultsStoreConformance : testing::Test, Harness {};
TYPED_TEST_SUITE_P(DefaultsStoreConformance);

TYPED_TEST_P(DefaultsStoreConformance, KeepsEveryValueWithItsType) {
  using Limits = std::numeric_limits<std::int64_t>;
  const std::vector<DefaultsValue> values{true,
                                          false,
                                          std::int64_t{0},
                                          std::int64_t{1},
                                          Limits::min(),
                                          Limits::max(),
                                          0.0,
                                          1.0,
                                          -2.5,
                                          0.1,
                                          1e300,
                                          9007199254740993.0,
                                          std::string(),
                                          std::string("true"),
                                          std::string("two\nlines \"quoted\" naïve 👍"),
                                          std::string(R"({"data":"x"})"),
                                          DataValue{},
                                          DataValue{R"({"keyCode":48,"modifiers":0})"},
                                          DataValue{std::string("\0\xFF\x80", 3)}};
  const auto key = [](std::size_t i) { return "key" + std::to_string(i); };
  const auto expectAll = [&] {
    for (std::size_t i = 0; i < values.size(); ++i) EXPECT_EQ(this->store().get(key(i)), values[i]) << i;
  };
  for (std::size_t i = 0; i < values.size(); ++i) this->store().set(key(i), values[i]);
  expectAll();
  this->reopen();
  expectAll();
}

TYPED_TEST_P(DefaultsStoreConformance, SetsReplacesAndRemoves) {
  EXPECT_EQ(this->store().get("a"), std::nullopt);
  EXPECT_THAT(this->store().keys(), testing::IsEmpty());
  this->store().set("a", true);
  this->store().set("ab", std::int64_t{2});
  this->store().set("a", std::string("text"));
  EXPECT_THAT(this->store().keys(), testing::UnorderedElementsAre("a", "ab"));
  EXPECT_EQ(this->store().get("a"), DefaultsValue(std::string("text")));
  this->store().remove("a");
  this->store().remove("never there");
  this->reopen();
  EXPECT_EQ(this->store().get("a"), std::nullopt);
  EXPECT_THAT(this->store().keys(), testing::ElementsAre("ab"));
}

REGISTER_TYPED_TEST_SUITE_P(DefaultsStoreConformance, KeepsEveryValueWithItsType, SetsReplacesAndRemoves);

}  // namespace nimbletype
