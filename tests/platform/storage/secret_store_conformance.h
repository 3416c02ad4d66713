#pragma once
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "platform/storage/secret_store.h"

// What every `SecretStore` must do. Instantiate with a default-constructible harness that has
//   SecretStore& store();
//   bool runUntil(std::function<bool()> done);  // lets the main loop run; false when it gave up
//   void reopen();  // as if the application had been quit and started again
//   void lock();    // the store, which then still answers
//   void vanish();  // nobody keeps secrets any more
namespace nimbletype {

template <typename Harness>
class SecretStoreConformance : public testing::Test {
 protected:
  using Found = std::expected<std::optional<std::string>, SecretFailure>;
  using Changed = std::expected<void, SecretFailure>;

  SecretStore& store() { return harness_.store(); }

  Found read(const std::string& account) {
    return await<Found>([&](auto done) { return store().read(account, done); });
  }
  Changed write(const std::string& account, const std::string& secret) {
    return await<Changed>([&](auto done) { return store().write(account, secret, done); });
  }
  Changed remove(const std::string& account) {
    return await<Changed>([&](auto done) { return store().remove(account, done); });
  }

  Harness harness_;

 private:
  template <typename Answer, typename Start>
  Answer await(Start start) {
    std::optional<Answer> answer;
    const Task task = start([&](Answer given) { answer = std::move(given); });
    EXPECT_FALSE(answer.has_value()) << "answered before a later turn";
    EXPECT_TRUE(harness_.runUntil([&] { return answer.has_value(); })) << "never answered";
    return answer ? *answer : std::unexpected(SecretFailure::unavailable);
  }
};

TYPED_TEST_SUITE_P(SecretStoreConformance);

TYPED_TEST_P(SecretStoreConformance, KeepsBytesUntilTheyAreRemoved) {
  EXPECT_EQ(this->read("a"), std::nullopt);
  const std::vector<std::string> secrets{"plain", "naïve 👍", std::string("\0\xFF\r\n", 4), "",
                                         std::string(10'000, 'x')};
  for (const auto& secret : secrets) {
    EXPECT_TRUE(this->write("a", secret));
    EXPECT_EQ(this->read("a"), secret);
    this->harness_.reopen();
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
  this->harness_.lock();
  EXPECT_EQ(this->read("a"), std::unexpected(SecretFailure::locked));
  EXPECT_EQ(this->read("b"), std::nullopt);
  EXPECT_EQ(this->write("a", "new"), std::unexpected(SecretFailure::locked));
  EXPECT_EQ(this->remove("a"), std::unexpected(SecretFailure::locked));
  EXPECT_TRUE(this->remove("b"));
}

TYPED_TEST_P(SecretStoreConformance, UnavailableIsNotAbsent) {
  this->harness_.vanish();
  EXPECT_EQ(this->read("a"), std::unexpected(SecretFailure::unavailable));
  EXPECT_EQ(this->write("a", "secret"), std::unexpected(SecretFailure::unavailable));
  EXPECT_EQ(this->remove("a"), std::unexpected(SecretFailure::unavailable));
}

TYPED_TEST_P(SecretStoreConformance, DestroyedTasksAreNeverAnswered) {
  bool answered = false;
  {
    const Task dropped = this->store().read("a", [&](const auto&) { answered = true; });
  }
  {
    const Task dropped = this->store().write("b", "x", [&](const auto&) { answered = true; });
  }
  EXPECT_EQ(this->read("c"), std::nullopt);
  EXPECT_FALSE(answered);
  Task own;
  own = this->store().read("a", [&](const auto&) {
    own = {};
    answered = true;
  });
  EXPECT_TRUE(this->harness_.runUntil([&] { return answered; })) << "never answered";
}

REGISTER_TYPED_TEST_SUITE_P(SecretStoreConformance, KeepsBytesUntilTheyAreRemoved, LockedIsNotAbsent,
                            UnavailableIsNotAbsent, DestroyedTasksAreNeverAnswered);

}  // namespace nimbletype
