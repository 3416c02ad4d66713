#include "main/arguments.h"

#include <gtest/gtest.h>

namespace nimbletype {
namespace {

TEST(Arguments, AreReadWithWhatTheDesktopPasses) {
  const std::vector<std::pair<std::vector<std::string>, Arguments>> table{
      {{}, {}},
      {{"--play-intro"}, {.playIntro = true}},
      {{"--open-settings"}, {.openSettings = true}},
      {{"--open-settings", "keys", "--verbose"}, {.openSettings = true, .pane = "keys", .verbose = true}},
      {{"--open-settings=about"}, {.openSettings = true, .pane = "about"}},
      {{"--open-settings", "/a/file"}, {.openSettings = true}},
      {{"--model", "--odd.gguf", "--help"}, {.model = "--odd.gguf", .help = true}},
      {{"--model=a=b.gguf", "--version"}, {.model = "a=b.gguf", .version = true}},
      {{"-session", "--id", "-psn_0_1", "file", "-x"}, {}},
      {{"--style", "fusion", "--style=fusion", "-platform", "xcb", "--sync", "--display", ":0"}, {}},
      {{"--name", "--play-intro"}, {}},
      {{"--", "--foo"}, {}}};
  for (const auto& [words, expected] : table) {
    const auto read = readArguments(words);
    ASSERT_TRUE(read.has_value()) << read.error();
    EXPECT_EQ(*read, expected) << testing::PrintToString(words);
  }
}

TEST(Arguments, SayWhatIsWrongInASentence) {
  const std::vector<std::pair<std::vector<std::string>, std::string>> table{
      {{"--verbose", "--foo=1"}, "Nimbletype does not know \"--foo\"; --help lists what it knows."},
      {{"--"}, ""},
      {{"---help"}, "Nimbletype does not know \"---help\"; --help lists what it knows."},
      {{"--open-settings=nowhere"}, "The settings have no pane \"nowhere\"; --help lists them."},
      {{"--model"}, "\"--model\" needs the name of a file behind it."}};
  for (const auto& [words, fault] : table) {
    const auto read = readArguments(words);
    EXPECT_EQ(read.has_value() ? "" : read.error(), fault);
  }
}

}  // namespace
}  // namespace nimbletype
