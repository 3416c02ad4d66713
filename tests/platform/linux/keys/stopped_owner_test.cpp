#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>

#include "tests/platform/linux/keys/key_desk.h"

namespace nimbletype {
namespace {

using testing::ElementsAre;

constexpr KeyCombo tab{key::tab, {}}, letter{0, {}};

// The process with the tap, as the whole application would be.
struct StoppedOwnerTest : testing::Test {
  StoppedOwnerTest() {
    const auto program = std::filesystem::read_symlink("/proc/self/exe").parent_path() / "key_tap_owner";
    std::string name = program, display = desk.display.name();
    char* arguments[] = {name.data(), display.data(), nullptr};
    posix_spawn(&owner, program.c_str(), nullptr, nullptr, arguments, environ);
    waitForGrab();
  }
  ~StoppedOwnerTest() override {
    kill(owner, SIGKILL);
    waitpid(owner, nullptr, 0);
  }
  void waitForGrab() {
    desk.waitUntil("the other process to grab Tab", [&] { return desk.window.isGrabbed(tab); });
  }
  std::vector<KeyCombo> received(std::vector<KeyCombo> pressed) {
    desk.window.keys.clear();
    for (const KeyCombo& combo : pressed) desk.user.press(combo.keyCode, combo.modifiers);
    desk.letKeysArrive();
    return desk.window.keys;
  }

  KeyDesk desk;
  pid_t owner = -1;
};

TEST_F(StoppedOwnerTest, EveryKeyArrivesWhileTheOwnerIsStopped) {
  desk.waitUntil("the tap to take Tab", [&] { return received({tab}).empty(); });
  ASSERT_EQ(kill(owner, SIGSTOP), 0);
  int status = 0;
  ASSERT_EQ(waitpid(owner, &status, WUNTRACED), owner);
  ASSERT_TRUE(WIFSTOPPED(status));
  EXPECT_THAT(received({tab, letter, tab, tab, letter}), ElementsAre(tab, letter, tab, tab, letter));

  ASSERT_EQ(kill(owner, SIGCONT), 0);
  desk.waitUntil("the tap to take Tab again", [&] { return received({tab}).empty(); });
}

TEST_F(StoppedOwnerTest, EveryKeyArrivesOnceTheOwnerIsKilled) {
  ASSERT_EQ(kill(owner, SIGKILL), 0);
  ASSERT_EQ(waitpid(owner, nullptr, 0), owner);
  EXPECT_THAT(received({tab, letter}), ElementsAre(tab, letter));
  desk.waitUntil("the grab to go", [&] { return !desk.window.isGrabbed(tab); });
}

}  // namespace
}  // namespace nimbletype
