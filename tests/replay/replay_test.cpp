#include "replay/replay.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>

namespace nimbletype {
namespace {

using nlohmann::json;
namespace fs = std::filesystem;

struct Outcome {
  int status = 0;
  std::string output, errors;
};

Outcome run(const std::string& script) {
  std::istringstream input(script);
  std::ostringstream output, errors;
  const int status = runReplay(input, output, errors);
  return {status, output.str(), errors.str()};
}

std::vector<json> lines(const std::string& output) {
  std::vector<json> parsed;
  std::istringstream stream(output);
  for (std::string line; std::getline(stream, line);) parsed.push_back(json::parse(line));
  return parsed;
}

bool includes(const json& line, const json& expected) {
  for (const auto& [key, value] : expected.items())
    if (!line.contains(key) || line.at(key) != value) return false;
  return true;
}

// A story is a replay that says in its comments what must be noticed: "#> {...}" a line with these fields, in
// this order; "#! {...}" no such line before the next expected one.
void tell(const fs::path& path) {
  std::ifstream file(path);
  std::stringstream script;
  script << file.rdbuf();
  const Outcome outcome = run(script.str());
  ASSERT_EQ(outcome.status, 0) << outcome.errors;
  const std::vector<json> noticed = lines(outcome.output);

  std::size_t at = 0;
  std::vector<json> forbidden;
  const auto skipTo = [&](const json* expected, int number) {
    for (; at < noticed.size(); ++at) {
      if (expected && includes(noticed[at], *expected)) break;
      for (const json& never : forbidden)
        EXPECT_FALSE(includes(noticed[at], never))
            << path << ", before line " << number << ": " << noticed[at];
    }
    forbidden.clear();
    const bool came = !expected || at < noticed.size();
    ASSERT_TRUE(came) << path << ':' << number << ": never came: " << *expected << '\n' << outcome.output;
    ++at;
  };
  std::string line;
  int number = 1, expectations = 0;
  for (; std::getline(script, line); ++number) {
    if (line.starts_with("#! ")) forbidden.push_back(json::parse(line.substr(3)));
    if (!line.starts_with("#> ")) continue;
    const json expected = json::parse(line.substr(3));
    ASSERT_NO_FATAL_FAILURE(skipTo(&expected, number));
    ++expectations;
  }
  skipTo(nullptr, number);
  EXPECT_GT(expectations, 0) << path << " expects nothing";
}

TEST(Replay, StoriesComeTrue) {
  std::size_t count = 0;
  for (const auto& entry : fs::directory_iterator("tests/replay/stories")) {
    SCOPED_TRACE(entry.path());
    tell(entry.path());
    ++count;
  }
  EXPECT_GT(count, 5U);
}

TEST(Replay, SameInputGivesTheSameBytes) {
  std::ifstream file("tests/replay/stories/taking_words.jsonl");
  std::stringstream script;
  script << file.rdbuf();
  EXPECT_EQ(run(script.str()).output, run(script.str()).output);
}

TEST(Replay, LinesThatAreNotValidEndTheRun) {
  std::ifstream cases("tests/replay/invalid_lines.txt");
  int count = 0;
  for (std::string line, sentence; std::getline(cases, line);) {
    if (line.starts_with('#')) continue;
    ASSERT_TRUE(std::getline(cases, sentence)) << line;
    ++count;
    const Outcome outcome =
        run(std::string("{\"t\":\"field\",\"before\":\"Hello\"}\n") + line + "\n{\"t\":\"dance\"}\n");
    EXPECT_EQ(outcome.status, 2) << line;
    EXPECT_TRUE(outcome.errors.starts_with(sentence)) << line << " gave: " << outcome.errors;
    EXPECT_EQ(std::count(outcome.errors.begin(), outcome.errors.end(), '\n'), 1) << outcome.errors;
    EXPECT_FALSE(outcome.output.empty()) << "what came before the line is printed";
  }
  EXPECT_GT(count, 15);
}

}  // namespace
}  // namespace nimbletype
