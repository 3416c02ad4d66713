#include "platform/linux/storage/json_defaults_store.h"

#include <gmock/gmock.h>

#include "platform/scripted/storage/memory_file_store.h"
#include "platform/scripted/system/recording_system_log.h"
#include "platform/scripted/system/virtual_main_loop.h"
#include "platform/storage/read_only_file.h"
#include "tests/platform/storage/defaults_store_conformance.h"
#include "tools/stage/temporary_folder.h"

namespace nimbletype {
namespace {

using testing::HasSubstr;

struct JsonStoreHarness {
  DefaultsStore& store() { return *json; }
  void reopen() {
    json.reset();
    json.emplace(file, loop, log);
  }
  MemoryFileStore file;
  VirtualMainLoop loop;
  RecordingSystemLog log;
  std::optional<JsonDefaultsStore> json{std::in_place, file, loop, log};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Json, DefaultsStoreConformance, JsonStoreHarness);

struct JsonDefaultsStoreTest : testing::Test, JsonStoreHarness {
  JsonDefaultsStore& open(const std::string& content) {
    file.content = content;
    reopen();
    return *json;
  }
};

TEST_F(JsonDefaultsStoreTest, ReadsHandWrittenForms) {
  const auto& store = open(R"({
    // tuned by me
    "scale": 1, "exact": 1.0, "small": 1e-3, "on": true, "huge": 18446744073709551615, "nothing": null,
    "list": [1], "key": {"data": "x"}, "raw": {"bytes": [0, 255]}, "odd": {"bytes": [256]}, "other": {"a": 1}})");
  const std::vector<std::pair<std::string, std::optional<DefaultsValue>>> table{
      {"scale", std::int64_t{1}}, {"exact", 1.0},
      {"small", 0.001},           {"on", true},
      {"key", DataValue{"x"}},    {"raw", DataValue{std::string("\0\xFF", 2)}},
      {"huge", std::nullopt},     {"nothing", std::nullopt},
      {"list", std::nullopt},     {"odd", std::nullopt},
      {"other", std::nullopt},
  };
  for (const auto& [key, value] : table) EXPECT_EQ(store.get(key), value) << key;
}

TEST_F(JsonDefaultsStoreTest, KeepsWhatItDoesNotUnderstand) {
  auto& store = open(R"({"AppleLanguages": ["de"], "a": 1})");
  store.set("a", std::int64_t{2});
  store.flush();
  EXPECT_THAT(*file.content, HasSubstr(R"("AppleLanguages": [)"));
  EXPECT_THAT(store.keys(), testing::ElementsAre("AppleLanguages", "a"));
}

TEST_F(JsonDefaultsStoreTest, SetsAsideWhatCannotBeRead) {
  for (const std::string content : {"{\"a\": 1", "[1]", "", "garbage\xFF"}) {
    SCOPED_TRACE(content);
    log.lines.clear();
    auto& store = open(content);
    EXPECT_THAT(store.keys(), testing::IsEmpty());
    EXPECT_EQ(file.asides.back(), content);
    EXPECT_EQ(log.lines.size(), 1U);
  }
}

TEST_F(JsonDefaultsStoreTest, LeavesAnotherProgramsFileAlone) {
  const TemporaryFolder folder;
  const auto path = folder.path / "settings.json";
  ReadOnlyFile othersFile(path);
  for (const std::string content : {"", "{\"a\": true}", "garbage"}) {
    if (!content.empty()) AtomicFile(path).write(content);
    const JsonDefaultsStore store(othersFile, loop, log);
    loop.advance(Milliseconds(0));
    EXPECT_EQ(store.get("a").has_value(), content.starts_with('{'));
    EXPECT_EQ(AtomicFile(path).read().value_or(""), content);
    EXPECT_FALSE(std::filesystem::exists(path.string() + ".unreadable"));
  }
  EXPECT_THAT(log.lines, testing::ElementsAre(testing::Field(&RecordingSystemLog::Line::message,
                                                             "the settings file cannot be read")));
}

TEST_F(JsonDefaultsStoreTest, WritesTheChangesOfOneTurnTogether) {
  auto& store = *json;
  for (int i = 0; i < 50; ++i) store.set("key" + std::to_string(i), std::int64_t{i});
  loop.advance(Milliseconds(0));
  EXPECT_EQ(file.writes, 1);
  store.remove("never there");
  loop.advance(Milliseconds(0));
  EXPECT_EQ(file.writes, 1);
}

TEST_F(JsonDefaultsStoreTest, AFailedWriteIsTriedAgainWithTheNextChange) {
  file.failsToWrite = true;
  store().set("a", true);
  loop.advance(Milliseconds(0));
  EXPECT_EQ(log.lines.size(), 1U);
  EXPECT_EQ(store().get("a"), DefaultsValue(true));
  file.failsToWrite = false;
  store().set("b", true);
  loop.advance(Milliseconds(0));
  EXPECT_THAT(*file.content, HasSubstr("\"a\": true"));
}

}  // namespace
}  // namespace nimbletype
