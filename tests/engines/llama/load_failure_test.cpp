// Files that are no model, or no longer a whole one: the process goes on, and the user is told.
#include <filesystem>
#include <fstream>
#include <iterator>

#include "tests/engines/writing/runtime_fixture.h"

namespace nimbletype {
namespace {

namespace fs = std::filesystem;

class LoadFailure : public RuntimeFixture {
 protected:
  void SetUp() override {
    folder = fs::temp_directory_path() / (std::string("nimbletype-load-") +
                                          testing::UnitTest::GetInstance()->current_test_info()->name());
    fs::remove_all(folder);
    fs::create_directories(folder);
    std::ifstream file(starterModel, std::ios::binary);
    whole.assign(std::istreambuf_iterator<char>(file), {});
  }
  void TearDown() override { fs::remove_all(folder); }

  std::string write(const std::string& name, const std::string& content) {
    const auto path = folder / name;
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
  fs::path folder;
};

TEST_F(LoadFailure, FilesThatAreNoModel) {
  expectRefused((folder / "missing.gguf").string());
  expectRefused(folder.string());
  expectRefused("");
  expectRefused(write("empty.gguf", ""));
  expectRefused(write("text.gguf", "Dear Anna, this is not a model at all."));
  expectRefused(write("magic.gguf", "GGUF"));
  expectRefused("/dev/zero");
}

TEST_F(LoadFailure, ModelsCutOffAnywhere) {
  const auto size = whole.size();
  for (const std::size_t length :
       {std::size_t{8}, std::size_t{23}, std::size_t{24}, std::size_t{100}, std::size_t{5000},
        std::size_t{60000}, std::size_t{150000}, size / 2, size - 1})
    expectRefused(write("cut.gguf", whole.substr(0, length)));
}

TEST_F(LoadFailure, ModelsWithDamagedHeads) {
  for (const std::size_t at : {4, 8, 16, 24}) {
    auto damaged = whole;
    damaged.replace(at, 8, "\xFF\xFF\xFF\xFF\xFF\xFF\xFF\x7F");
    expectRefused(write("damaged.gguf", damaged));
  }
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
  expectRefused(with("llama.rope.dimension_count", zero));
  expectRefused(with("llama.rope.dimension_count", seven));
  expectRefused(with("llama.block_count", zero));
  expectRefused(with("llama.block_count", huge));
  expectRefused(with("llama.attention.layer_norm_rms_epsilon", minusOne));
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

TEST_F(LoadFailure, AGoodModelLoadsAfterwards) {
  expectRefused(write("text.gguf", "no model"));
  EXPECT_TRUE(run(job("Thank you", 2)).has_value());
  expectRefused(write("cut.gguf", whole.substr(0, whole.size() / 2)));
  EXPECT_TRUE(run(job("Thank you", 2)).has_value());
}

TEST_F(LoadFailure, LlamasReasonGoesToTheLog) {
  expectRefused(write("cut.gguf", whole.substr(0, whole.size() / 2)));
  loop.runPosted();
  EXPECT_FALSE(log.lines.empty());
}

}  // namespace
}  // namespace nimbletype
