#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <fstream>
#include <iostream>
#include <random>
#include <thread>

#include "engines/store/file_digest.h"
#include "tests/whole/download/download_process.h"
#include "tools/stage/servers/https_file_server.h"
#include "tools/stage/temporary_folder.h"

namespace nimbletype {
namespace {

namespace fs = std::filesystem;

constexpr std::int64_t megabyte = 1'000'000;

// 0 when there is no such file.
std::int64_t sizeOf(const fs::path& file) {
  std::error_code error;
  const auto size = fs::file_size(file, error);
  return error ? 0 : static_cast<std::int64_t>(size);
}

std::string read(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

void writeRandom(const fs::path& file, int megabytes, unsigned seed) {
  std::mt19937_64 random(seed);
  std::vector<std::uint64_t> block(megabyte / sizeof(std::uint64_t));
  std::ofstream stream(file, std::ios::binary);
  for (int i = 0; i < megabytes; ++i) {
    std::ranges::generate(block, std::ref(random));
    stream.write(reinterpret_cast<const char*>(block.data()), megabyte);
  }
}

class DownloadTest : public testing::Test {
 protected:
  DownloadTest() {
    fs::create_directories(served);
    ::setenv("SSL_CERT_FILE", server.authority().c_str(), 1);
    ::setenv("XDG_DATA_HOME", (folder.path / "home").c_str(), 1);
    ::setenv("XDG_CONFIG_HOME", (folder.path / "home").c_str(), 1);
  }

  void serve(int megabytes, unsigned seed) {
    writeRandom(served / "model.gguf", megabytes, seed);
    size = megabytes * megabyte;
    digest = sha256OfFile(served / "model.gguf", false).value();
  }
  std::vector<std::string> options(const std::string& path) const {
    return {"--from", server.url(path), "--sha256", digest,         "--size", std::to_string(size),
            "--name", "model.gguf",     "--folder", models.string()};
  }
  std::vector<std::string> names() const {
    std::vector<std::string> all;
    for (const auto& entry : fs::directory_iterator(models)) all.push_back(entry.path().filename().string());
    return all;
  }
  // Until so much is there, or the process has ended.
  void awaitBytes(const DownloadProcess& process, std::int64_t bytes) const {
    while (sizeOf(part) < bytes && process.isRunning())
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }

  TemporaryFolder folder;
  fs::path served = folder.path / "served", models = folder.path / "Models", output = folder.path / "output";
  fs::path part = models / ".partial-model.gguf";
  HttpsFileServer server{served};
  std::string digest;
  std::int64_t size = 0;
};

// "bytes=START-", or "-" for a request without a range.
std::string rangeFrom(std::int64_t start) {
  return start > 0 ? "bytes=" + std::to_string(start) + "-" : "-";
}

TEST_F(DownloadTest, KilledTenTimesItStillFetchesEveryByteOnce) {
  const auto seed = std::random_device()();
  std::cout << "seed " << seed << "\n";
  std::mt19937 random(seed);
  serve(200, seed);
  std::vector<testing::Matcher<std::string>> ranges;
  for (int kills = 0; kills < 10; ++kills) {
    const auto held = sizeOf(part);
    ranges.push_back(testing::EndsWith(" " + rangeFrom(held)));
    DownloadProcess process(options("/slow/40m/model.gguf"), output);
    awaitBytes(process, held + std::uniform_int_distribution<std::int64_t>(1, (size - held) / 6)(random));
    process.signal(SIGKILL);
    ASSERT_EQ(process.wait(), -SIGKILL) << read(output);
    ASSERT_FALSE(fs::exists(models / "model.gguf"));
  }
  ranges.push_back(testing::EndsWith(" " + rangeFrom(sizeOf(part))));
  DownloadProcess process(options("/slow/40m/model.gguf"), output);
  ASSERT_EQ(process.wait(), 0) << read(output);
  EXPECT_EQ(sha256OfFile(models / "model.gguf", false), digest);
  EXPECT_THAT(names(), testing::UnorderedElementsAre("model.gguf", "model.gguf.verified"));
  server.stop();
  EXPECT_THAT(server.log(), testing::UnorderedElementsAreArray(ranges));
}

TEST_F(DownloadTest, SaysWhyItFailedAndLeavesTheEarlierModel) {
  serve(2, 1);
  digest.front() = digest.front() == '0' ? '1' : '0';
  fs::create_directories(models);
  std::ofstream(models / "model.gguf") << "the earlier model";
  std::ofstream(models / "model.gguf.verified") << "its digest";
  const std::pair<const char*, const char*> table[] = {
      {"/moved/model.gguf", "The download didn't match the expected file, so it was deleted. Try again.\n"},
      // a detour that is not encrypted
      {"/plain/model.gguf", "The download stopped. Check your connection, then try again.\n"}};
  for (const auto& [path, sentence] : table) {
    DownloadProcess process(options(path), output);
    EXPECT_EQ(process.wait(), 1);
    EXPECT_THAT(read(output), testing::EndsWith(sentence));
    EXPECT_EQ(read(models / "model.gguf"), "the earlier model");
    EXPECT_THAT(names(), testing::UnorderedElementsAre("model.gguf", "model.gguf.verified"));
  }
}

TEST_F(DownloadTest, InterruptedFromTheKeyboardItSaysHowToGoOn) {
  serve(2, 1);
  DownloadProcess process(options("/slow/1m/model.gguf"), output);
  awaitBytes(process, 1000);
  process.signal(SIGINT);
  EXPECT_EQ(process.wait(), 1);
  EXPECT_THAT(read(output), testing::HasSubstr("the same command goes on from there"));
  const auto held = sizeOf(part);
  EXPECT_GT(held, 0);
  DownloadProcess again(options("/slow/1m/model.gguf"), output);
  EXPECT_EQ(again.wait(), 0) << read(output);
  server.stop();
  EXPECT_THAT(server.log().back(), testing::EndsWith(rangeFrom(held)));
}

}  // namespace
}  // namespace nimbletype
