#include "main/single_instance.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QCoreApplication>
#include <array>
#include <csignal>
#include <cstdlib>
#include <future>
#include <optional>
#include <utility>

#include "tools/stage/temporary_folder.h"
#include "tools/stage/waiting.h"

namespace nimbletype {
namespace {

using std::chrono_literals::operator""s;
using Words = std::vector<std::string>;

// Processes that start at once, tell whether they were the first, and stay until they are ended.
class Starters {
 public:
  explicit Starters(int count) {
    std::array<int, 2> go{}, told{};
    EXPECT_EQ(pipe(go.data()) + pipe(told.data()), 0);
    for (int i = 0; i < count; ++i)
      if (processes_.push_back(fork()); processes_.back() == 0) start(go, told[1]);
    close(go[0]);
    close(go[1]);
    for (int i = 0; i < count; ++i) {
      char answer = 0;
      EXPECT_EQ(::read(told[0], &answer, 1), 1);
      first += answer;
    }
    close(told[0]);
    close(told[1]);
  }
  ~Starters() { kill(); }
  Starters(const Starters&) = delete;
  Starters& operator=(const Starters&) = delete;
  void kill() {
    for (const pid_t process : std::exchange(processes_, {})) {
      ::kill(process, SIGKILL);
      waitpid(process, nullptr, 0);
    }
  }
  int first = 0;

 private:
  [[noreturn]] static void start(const std::array<int, 2>& go, int told) {
    close(go[1]);
    char none = 0;
    [[maybe_unused]] auto done = ::read(go[0], &none, 1);
    int count = 0;
    const QCoreApplication application(count, nullptr);
    const SingleInstance instance("name");
    const char answer = instance.isFirst() ? 1 : 0;
    done = ::write(told, &answer, 1);
    for (;;) pause();
  }
  std::vector<pid_t> processes_;
};

struct SingleInstanceTest : testing::Test {
  SingleInstanceTest() { setenv("XDG_RUNTIME_DIR", folder.path.c_str(), 1); }
  void startApplication() {
    static int count = 0;
    application.emplace(count, nullptr);
  }
  TemporaryFolder folder;
  std::optional<QCoreApplication> application;
};

TEST_F(SingleInstanceTest, IsOneOfManyAndLosesItsPlaceWithItsLife) {
  Starters rivals(6);
  EXPECT_EQ(rivals.first, 1);
  startApplication();
  // It does not answer: nobody serves its loop.
  EXPECT_FALSE(SingleInstance("name").handOver({"--play-intro"}));
  EXPECT_TRUE(SingleInstance("other/name").isFirst());
  rivals.kill();
  EXPECT_TRUE(SingleInstance("name").isFirst());
}

TEST_F(SingleInstanceTest, HearsWhatLaterStartsWereAskedFor) {
  startApplication();
  SingleInstance first("name");
  ASSERT_TRUE(first.isFirst());
  std::vector<Words> heard;
  const auto start = [&](const Words& words) {
    auto answer = std::async(std::launch::async, [&] { return SingleInstance("name").handOver(words); });
    waitFor("the second start", [&] { return answer.wait_for(0s) == std::future_status::ready; });
    return answer.get();
  };
  const Words words{"--open-settings", "keys", "", "ein \"Wort\"\n für zwei"};
  EXPECT_TRUE(start(words));
  first.onArguments([&](const Words& arguments) { heard.push_back(arguments); });
  EXPECT_TRUE(start({}));
  EXPECT_FALSE(start({std::string(100'000, 'x')}));
  EXPECT_EQ(heard, (std::vector<Words>{words, {}}));
}

}  // namespace
}  // namespace nimbletype
