#include "personal/memory/writing_memory.h"

#include <gmock/gmock.h>

#include <nlohmann/json.hpp>

#include "personal/memory/memory_json.h"
#include "platform/scripted/storage/memory_file_store.h"
#include "platform/scripted/storage/memory_secret_store.h"
#include "platform/scripted/system/recording_system_log.h"
#include "platform/scripted/system/scripted_background_work.h"
#include "platform/scripted/system/virtual_main_loop.h"

namespace nimbletype {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using State = MemoryState::Case;

const std::string first = "This is the first passage of all.", second = "And another one comes after it.",
                  third = "The third is written even later.";

// A user's computer; the application on it may be quit and started again.
class WritingMemoryTest : public testing::Test {
 protected:
  WritingMemoryTest() { start(); }
  void start() {
    memory.reset();
    memory.emplace(MemoryVault::Services{file, secrets, background, loop, log});
    memory->load();
  }
  void startAnew() {
    start();
    pass(0ms);
  }
  void pass(Milliseconds time) { loop.advance(time); }
  void take(const std::string& text, const std::string& app = "app:a") {
    memory->remember(text, app, loop.wallNow());
  }
  void save(const std::string& text) {
    take(text);
    pass(WritingMemory::saveDelay);
  }
  std::vector<std::string> texts() const {
    std::vector<std::string> all;
    for (const MemoryEntry& entry : memory->entries()) all.push_back(entry.text);
    return all;
  }
  const std::string& problem() const { return memory->state().problem; }

  VirtualMainLoop loop;
  MemoryFileStore file;
  MemorySecretStore secrets{loop};
  ScriptedBackgroundWork background{loop};
  RecordingSystemLog log;
  std::optional<WritingMemory> memory;
};

TEST_F(WritingMemoryTest, LeavesAFileAloneThatIsYetToCome) {
  save(first);
  memory.emplace(MemoryVault::Services{file, secrets, background, loop, log});
  const auto box = std::exchange(file.content, std::nullopt);
  memory->awaitFile();
  save(second);
  pass(WritingMemory::retryDelay);
  file.content = box;
  memory->load();
  pass(WritingMemory::saveDelay);
  EXPECT_EQ(texts(), (std::vector<std::string>{first, second}));
}

TEST_F(WritingMemoryTest, SavesOnceASecondAfterTheLastChange) {
  take("Twenty-three characters");
  EXPECT_EQ(memory->count(), 0U);
  take("Twenty-four characters..");
  pass(600ms);
  take(second, "app:b");
  pass(999ms);
  EXPECT_EQ(file.writes, 0);
  EXPECT_THAT(secrets.secrets, IsEmpty()) << "the store is left alone until there is something to seal";
  pass(1ms);
  EXPECT_EQ(file.writes, 1);
  EXPECT_EQ(secrets.secrets.at("writing-memory-key").size(), 32U);
  EXPECT_THAT(*file.content, testing::Not(HasSubstr("characters")));
  const auto entries = memory->entries();
  startAnew();
  EXPECT_EQ(texts(), (std::vector<std::string>{"Twenty-four characters..", second}));
  EXPECT_EQ(memory->entries()[1].date, entries[1].date);
  EXPECT_EQ(memory->entries()[1].keywords, entries[1].keywords);
  EXPECT_EQ(memory->count("app:b"), 1U);
}

TEST_F(WritingMemoryTest, NothingIsLostWhileTheKeyCannotBeRead) {
  save(first);
  const auto key = secrets.secrets;
  const struct {
    bool MemorySecretStore::*flag;
    bool value;
    const char* sentence;
  } cases[] = {
      {&MemorySecretStore::locked, true, "Writing memory is paused until your Keychain is unlocked."},
      {&MemorySecretStore::available, false,
       "Writing memory is paused because your Keychain doesn't answer."}};
  for (const auto& [flag, value, sentence] : cases) {
    SCOPED_TRACE(sentence);
    const auto before = *file.content;
    secrets.*flag = value;
    startAnew();
    EXPECT_EQ(memory->state().state, State::paused);
    EXPECT_EQ(problem(), sentence);
    take(second);
    EXPECT_THAT(memory->passages("", "app:a", 5), ElementsAre(second));
    pass(std::chrono::hours(1));
    EXPECT_EQ(file.content, before);
    EXPECT_EQ(secrets.secrets, key);
    secrets.*flag = !value;
    pass(WritingMemory::retryDelay + WritingMemory::saveDelay);
    EXPECT_EQ(memory->state(), (MemoryState{State::ready, ""}));
    startAnew();
    EXPECT_THAT(texts(), ElementsAre(first, second)) << "the second grows into itself the second time";
  }
  EXPECT_THAT(file.asides, IsEmpty());
}

TEST_F(WritingMemoryTest, WhatIsForgottenWhileTheFileIsClosedIsForgottenInItToo) {
  save(first);
  secrets.locked = true;
  startAnew();
  memory->forget("app:a");
  take(second);
  secrets.locked = false;
  memory->retry();
  pass(0ms);
  EXPECT_THAT(texts(), ElementsAre(second));
}

TEST_F(WritingMemoryTest, WhatCannotBeOpenedIsSetAside) {
  save(first);
  const std::string good = *file.content, key = secrets.secrets["writing-memory-key"];
  const auto sealedText = [&](const char* text) {
    return *sealed(text, SecretBytes(key.begin(), key.end()));
  };
  const std::pair<std::string, std::optional<std::string>> cases[] = {
      {good.substr(1), key},
      {"", key},
      {sealedText("{\"a\": 1}"), key},
      {sealedText("[{\"text\": \""), key},
      {good, std::string(32, 'k')},  // another key
      {good, std::nullopt}};         // the key has gone
  for (const auto& [content, secret] : cases) {
    file.content = content;
    file.asides.clear();
    secrets.secrets.clear();
    if (secret) secrets.secrets["writing-memory-key"] = *secret;
    startAnew();
    EXPECT_THAT(file.asides, ElementsAre(content));
    EXPECT_THAT(problem(), HasSubstr("set aside"));
    save(second);
    startAnew();
    EXPECT_THAT(texts(), ElementsAre(second));
    EXPECT_EQ(problem(), "");
    EXPECT_TRUE(!secret || secrets.secrets["writing-memory-key"] == *secret);
  }
}

TEST_F(WritingMemoryTest, NeitherADamagedKeyNorAFileThatCannotBeMovedIsReplaced) {
  secrets.secrets["writing-memory-key"] = "short";
  save(first);
  EXPECT_THAT(problem(), HasSubstr("damaged"));
  EXPECT_EQ(secrets.secrets["writing-memory-key"], "short");
  EXPECT_FALSE(file.content);
  memory->eraseAll();
  save(second);
  EXPECT_EQ(problem(), "");
  EXPECT_EQ(secrets.secrets["writing-memory-key"].size(), 32U);
  file.content = "damaged";
  file.stays = true;
  startAnew();
  EXPECT_EQ(memory->state().state, State::paused);
  save(first);
  EXPECT_EQ(file.content, "damaged");
  file.stays = false;
  pass(WritingMemory::retryDelay + WritingMemory::saveDelay);
  EXPECT_THAT(file.asides, ElementsAre("damaged"));
  startAnew();
  EXPECT_THAT(texts(), ElementsAre(first));
}

TEST_F(WritingMemoryTest, ErasesEverything) {
  save(first);
  file.asides = {"an old one"};
  for (const auto& text : {second, third}) {
    take(text);
    memory->eraseAll();
  }
  pass(std::chrono::hours(1));
  EXPECT_EQ(memory->count(), 0U);
  EXPECT_FALSE(file.content);
  EXPECT_TRUE(file.asides.empty() && secrets.secrets.empty());
  save(third);
  startAnew();
  EXPECT_THAT(texts(), ElementsAre(third));
}

TEST_F(WritingMemoryTest, AKeyThatCouldNotBeErasedIsNotUsedAgain) {
  for (const bool writesOn : {true, false}) {
    save(first);
    const auto old = secrets.secrets;
    secrets.locked = true;
    memory->eraseAll();
    pass(0ms);
    EXPECT_FALSE(file.content);
    EXPECT_EQ(memory->state().state, State::paused);
    secrets.locked = false;
    writesOn ? save(second) : pass(WritingMemory::retryDelay);
    EXPECT_NE(secrets.secrets, old);
    EXPECT_EQ(secrets.secrets.empty(), !writesOn);
    EXPECT_EQ(file.content.has_value(), writesOn) << "nothing is there to be saved";
    startAnew();
    EXPECT_EQ(texts(), writesOn ? std::vector{second} : std::vector<std::string>());
    memory->eraseAll();
    pass(0ms);
  }
}

TEST_F(WritingMemoryTest, AFullDiskKeepsTheOldFile) {
  save(first);
  const auto before = file.content;
  file.failsToWrite = true;
  save(second);
  EXPECT_EQ(file.content, before);
  EXPECT_EQ(memory->state().state, State::ready);
  EXPECT_THAT(problem(), HasSubstr("aren't saved yet"));
  file.failsToWrite = false;
  save(third);
  EXPECT_EQ(problem(), "");
  startAnew();
  EXPECT_THAT(texts(), ElementsAre(first, second, third));
}

TEST_F(WritingMemoryTest, WhatIsUnsavedAtTheEndIsSaved) {
  pass(0ms);
  take(first);
  memory->finish();
  EXPECT_TRUE(memory->isBusy()) << "the first passage still needs its key";
  pass(0ms);
  EXPECT_FALSE(memory->isBusy());
  startAnew();
  EXPECT_THAT(texts(), ElementsAre(first));
  take(second);
  startAnew();
  EXPECT_THAT(texts(), ElementsAre(first, second)) << "the key was at hand";
  background.hold();
  save(third);
  take("And a fourth while the save of the third runs.");
  memory->finish();
  EXPECT_FALSE(memory->isBusy());
  background.release();
  startAnew();
  EXPECT_EQ(texts().size(), 4U);
}

// A store that asks the user to unlock it is not to do so every minute.
TEST_F(WritingMemoryTest, OneWhoRefusesTheKeyIsNotAskedAgain) {
  secrets.locked = true;
  save(first);
  EXPECT_EQ(memory->state().state, State::paused);
  secrets.locked = false;
  pass(10 * WritingMemory::retryDelay);
  EXPECT_THAT(secrets.secrets, IsEmpty());
  memory->retry();
  pass(0ms);
  EXPECT_EQ(secrets.secrets.size(), 1U);
  EXPECT_TRUE(file.content);
}

TEST_F(WritingMemoryTest, ReadsWhatOthersWrote) {
  const std::string json = R"([
    {"appKey": "app:a", "text": "kept", "date": 763030800.25, "mood": [1, null]},
    {"appKey": "web:b", "text": "too early", "date": -1e300},
    {"text": "too late", "date": 1e300},
    {"text": "undated", "date": "tomorrow"},
    {"text": 7}, {"date": 1}, null, "text"])";
  const auto entries = decoded(json);
  ASSERT_TRUE(entries);
  ASSERT_EQ(entries->size(), 4U);
  EXPECT_EQ(entries->at(0).date, WallTime(std::chrono::sys_days{std::chrono::March / 7 / 2025} + 9h + 250ms));
  EXPECT_LT(entries->at(1).date, entries->at(0).date);
  EXPECT_GT(entries->at(2).date, entries->at(0).date);
  const SecretBytes written = encoded(*entries);
  const auto again = nlohmann::json::parse(written.begin(), written.end());
  EXPECT_EQ(again[0], nlohmann::json::parse(json)[0]) << "what is not understood is kept";
  EXPECT_EQ(decoded("[]")->size(), 0U);
  EXPECT_FALSE(decoded("{}"));
  std::string many = "[{\"text\": \"oldest\"}";
  for (std::size_t i = 0; i < mostPassages; ++i) many += ",{\"text\": \"x\"}";
  EXPECT_EQ(decoded(many + "]")->front().text, "x");
}

TEST(MemoryText, CountsPassages) {
  EXPECT_EQ(rememberedText(0), "Nothing remembered yet");
  EXPECT_EQ(rememberedText(1), "1 passage remembered");
  EXPECT_EQ(rememberedText(2000), "2000 passages remembered");
  EXPECT_EQ(fromHereText(1) + ", " + fromHereText(0), "1 passage from here, 0 passages from here");
}

}  // namespace
}  // namespace nimbletype
