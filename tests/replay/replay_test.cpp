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
  const std::pair<const char*, const char*> cases[] = {
      {"{", "line 2: it is not valid JSON"},
      {"[1]", "line 2: it is not a JSON object"},
      {R"({"text":"x"})", "line 2: \"t\" is missing"},
      {R"({"t":"dance"})", "line 2: nothing is known about \"dance\""},
      {R"({"t":"set","key":"speed","value":1})", "line 2: There is no setting \"speed\"."},
      {R"({"t":"set","key":"isEnabled"})", "line 2: \"value\" is missing"},
      {R"({"t":"advance","ms":"soon"})", "line 2: \"ms\" must be a whole number"},
      {R"({"t":"advance","ms":-1})", "line 2: \"ms\" must not be below 0"},
      {R"({"t":"field","caretRect":[1,2,3]})", "line 2: \"caretRect\" must be four numbers"},
      {R"({"t":"field","before":null})", "line 2: \"before\" must be a text"},
      {R"({"t":"field","change":"mood"})", "line 2: \"mood\" is no kind of change"},
      {R"({"t":"rule","key":"Mail","mode":"on"})", "line 2: \"Mail\" is no rule key"},
      {R"({"t":"rule","key":"app:x","mode":"maybe"})", "line 2: \"maybe\" is no value of \"mode\""},
      {R"({"t":"pause","key":"app:x","seconds":null})", "line 2: \"seconds\" must be a whole number"},
      {R"({"t":"world","now":"tomorrow"})", "line 2: \"tomorrow\" is no time"},
      {R"({"t":"world","timeZone":"Moon/Base"})", "line 2: there is no time zone"},
      {R"({"t":"show","what":"off"})", "line 2: nothing called \"off\" can be shown"},
      {R"({"t":"key","keyCode":70000})", "line 2: \"keyCode\" must not be above 65535"},
      {R"({"t":"reply"})", "line 2: a reply needs"},
  };
  for (const auto& [line, sentence] : cases) {
    const Outcome outcome =
        run(std::string("{\"t\":\"field\",\"before\":\"Hello\"}\n") + line + "\n{\"t\":\"dance\"}\n");
    EXPECT_EQ(outcome.status, 2) << line;
    EXPECT_TRUE(outcome.errors.starts_with(sentence)) << line << " gave: " << outcome.errors;
    EXPECT_EQ(std::count(outcome.errors.begin(), outcome.errors.end(), '\n'), 1) << outcome.errors;
    EXPECT_FALSE(outcome.output.empty()) << "what came before the line is printed";
  }
}

}  // namespace
}  // namespace nimbletype
