#pragma once
#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "platform/storage/secret_store.h"
#include "tests/platform/system/task_lifetimes.h"

// What every `SecretStore` must do. Instantiate with a default-constructible harness that has
//   SecretStore& store();
//   void waitFor(std::string what, std::function<bool()> condition);  // lets the main loop run
//   void reopen();  // as if the application had been quit and started again
//   void lock();    // the store, which then still answers
//   void vanish();  // nobody keeps secrets any more
namespace nimbletype {

template <typename Harness>
struct SecretStoreConformance : testing::Test, Harness {
  using Found = std::expected<std::optional<std::string>, SecretFailure>;
  using Changed = std::expected<void, SecretFailure>;

  Found read(const std::string& account) {
    return await<Found>([&](auto done) { return this->store().read(account, done); });
  }
  Changed write(const std::string& account, const std::string& secret) {
    return await<Changed>([&](auto done) { return this->store().write(account, secret, done); });
  }
  Changed remove(const std::string& account) {
    return await<Changed>([&](auto done) { return this->store().remove(account, done); });
  }
  template <typename Answer, typename Start>
  Answer await(Start start) {
    std::optional<Answer> answer;
    const Task task = start([&](Answer given) { answer = std::move(given); });
    EXPECT_FALSE(answer.has_value()) << "answered before a later turn";
    this->waitFor("an answer", [&] { return answer.has_value(); });
    return answer.value();
  }
};
TYPED_TEST_SUITE_P(SecretStoreConformance);

TYPED_TEST_P(SecretStoreConformance, KeepsBytesUntilTheyAreRemoved) {
  EXPECT_EQ(this->read("a"), std::nullopt);
  for (const auto& secret : {std::string("plain"), std::string("naïve 👍"), std::string("\0\xFF\r\n", 4),
                             std::string(), std::string(10'000, 'x')}) {
    EXPECT_TRUE(this->write("a", secret));
    EXPECT_EQ(this->read("a"), secret);
    this->reopen();
    EXPECT_EQ(this->read("a"), secret);
    EXPECT_EQ(this->read("ab"), std::nullopt);
  }
  EXPECT_TRUE(this->write("b", "other"));
  EXPECT_TRUE(this->remove("a"));
  EXPECT_TRUE(this->remove("a"));
  EXPECT_EQ(this->read("a"), std::nullopt);
  EXPECT_EQ(this->read("b"), "other");
}

TYPED_TEST_P(SecretStoreConformance, LockedIsNotAbsent) {
  EXPECT_TRUE(this->write("a", "secret"));
  this->lock();
  EXPECT_EQ(this->read("a"), std::unexpected(SecretFailure::locked));
  EXPECT_EQ(this->read("b"), std::nullopt);
  EXPECT_EQ(this->write("a", "new"), std::unexpected(SecretFailure::locked));
  EXPECT_EQ(this->remove("a"), std::unexpected(SecretFailure::locked));
  EXPECT_TRUE(this->remove("b"));
}

TYPED_TEST_P(SecretStoreConformance, UnavailableIsNotAbsent) {
  this->vanish();
  EXPECT_EQ(this->read("a"), std::unexpected(SecretFailure::unavailable));
  EXPECT_EQ(this->write("a", "secret"), std::unexpected(SecretFailure::unavailable));
  EXPECT_EQ(this->remove("a"), std::unexpected(SecretFailure::unavailable));
}

TYPED_TEST_P(SecretStoreConformance, OnlyTasksThatAreKeptAreAnswered) {
  const auto waitFor = [&](auto... wait) { this->waitFor(wait...); };
  const auto telling = [](auto done) { return [done](const auto&) { done(); }; };
  expectTaskLifetimes([&](auto done) { return this->store().read("a", telling(done)); }, waitFor);
  expectTaskLifetimes([&](auto done) { return this->store().write("b", "x", telling(done)); }, waitFor);
}

REGISTER_TYPED_TEST_SUITE_P(SecretStoreConformance, KeepsBytesUntilTheyAreRemoved, LockedIsNotAbsent,
                            UnavailableIsNotAbsent, OnlyTasksThatAreKeptAreAnswered);

}  // namespace nimbletype
