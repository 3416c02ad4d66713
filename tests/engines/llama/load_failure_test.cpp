// Files that are no model, or no longer a whole one: the process goes on, and the user is told.
#include <filesystem>
#include <fstream>
#include <iterator>

#include "tests/engines/writing/runtime_fixture.h"
#include "tools/stage/temporary_folder.h"

namespace nimbletype {
namespace {

namespace fs = std::filesystem;

class LoadFailure : public RuntimeFixture {
 protected:
  LoadFailure() {
    std::ifstream file(starterModel, std::ios::binary);
    whole.assign(std::istreambuf_iterator<char>(file), {});
  }

  std::string write(const std::string& name, const std::string& content) {
    const auto path = folder.path / name;
    std::ofstream(path, std::ios::binary) << content;
    return path.string();
  }

  void expectRefused(const std::string& path) {
    auto order = job("Thank you", 2);
    order.modelPath = path;
    const auto result = run(order);
    ASSERT_FALSE(result.has_value()) << path;
    EXPECT_EQ(result.error().message(), "The model file couldn't be loaded") << path;
  }

  std::string whole;
  TemporaryFolder folder;
};

TEST_F(LoadFailure, FilesThatAreNoModel) {
  for (const std::string path :
       {folder.path / "missing.gguf", folder.path, fs::path(), fs::path("/dev/zero")})
    expectRefused(path);
  for (const char* content : {"", "Dear Anna, this is not a model at all.", "GGUF"})
    expectRefused(write("odd.gguf", content));
}

TEST_F(LoadFailure, ModelsCutOffAnywhereOrWithDamagedHeads) {
  for (const std::size_t length :
       {8UL, 23UL, 24UL, 100UL, 5000UL, 60000UL, 150000UL, whole.size() / 2, whole.size() - 1})
    expectRefused(write("cut.gguf", whole.substr(0, length)));
  for (const std::size_t at : {4, 8, 16, 24})
    expectRefused(
        write("damaged.gguf", std::string(whole).replace(at, 8, "\xFF\xFF\xFF\xFF\xFF\xFF\xFF\x7F")));
  auto unknown = whole;
  const auto name = unknown.find("llama", unknown.find("general.architecture") + 20);
  unknown.replace(name, 5, "lmaal");
  expectRefused(write("unknown.gguf", unknown));
}

// Over each of these llama.cpp itself would end the process or never return.
TEST_F(LoadFailure, WholeFilesThatMakeNoSense) {
  const auto with = [this](const std::string& key, const std::string& value) {
    auto changed = whole;
    const auto at = changed.find(key);
    EXPECT_NE(at, std::string::npos) << key;
    constexpr std::size_t type = 4;
    return write("odd.gguf", changed.replace(at + key.size() + type, value.size(), value));
  };
  const std::string zero(4, '\0'), minusOne("\0\0\x80\xBF", 4), seven("\7\0\0\0", 4),
      huge("\xFF\xFF\xFF\x7F", 4);
  const std::pair<const char*, std::string> table[] = {{"llama.rope.dimension_count", zero},
                                                       {"llama.rope.dimension_count", seven},
                                                       {"llama.block_count", zero},
                                                       {"llama.block_count", huge},
                                                       {"llama.attention.layer_norm_rms_epsilon", minusOne}};
  for (const auto& [key, value] : table) expectRefused(with(key, value));
  auto order = job("Thank you", 2);
  order.modelPath = with("llama.context_length", seven);
  EXPECT_TRUE(run(order).has_value()) << "a change that makes sense is no damage";
}

TEST_F(LoadFailure, UnreadableFiles) {
  const auto path = write("secret.gguf", whole);
  fs::permissions(path, fs::perms::none);
  if (std::ifstream(path).good()) GTEST_SKIP() << "this user may read everything";
  expectRefused(path);
}

TEST_F(LoadFailure, AGoodModelLoadsAfterwardsAndLlamasReasonIsLogged) {
  expectRefused(write("cut.gguf", whole.substr(0, whole.size() / 2)));
  loop.runPosted();
  EXPECT_FALSE(log.lines.empty());
  EXPECT_TRUE(run(job("Thank you", 2)).has_value());
  expectRefused(write("text.gguf", "no model"));
  EXPECT_TRUE(run(job("Thank you", 2)).has_value());
}

}  // namespace
}  // namespace nimbletype
