#pragma once
#include <gmock/gmock.h>

#include <fstream>

#include "engines/store/file_digest.h"
#include "engines/store/model_store.h"
#include "platform/scripted/network/scripted_http_downloads.h"
#include "platform/scripted/storage/scripted_disk_space.h"
#include "platform/scripted/system/recording_system_log.h"
#include "platform/scripted/system/scripted_background_work.h"
#include "platform/scripted/system/virtual_main_loop.h"
#include "tools/stage/temporary_folder.h"

namespace nimbletype {

// A store over a real folder, with a server that has the right file of ten thousand bytes.
class ModelStoreFixture : public testing::Test {
 protected:
  static constexpr auto notDownloaded = ModelPhase::Case::notDownloaded;
  static constexpr auto downloading = ModelPhase::Case::downloading;
  static constexpr auto checking = ModelPhase::Case::checking;
  static constexpr auto installed = ModelPhase::Case::installed;
  static constexpr auto failed = ModelPhase::Case::failed;
  static constexpr const char* paused =
      "The download paused because the connection dropped. Try again to pick up where it stopped.";
  static constexpr const char* stopped = "The download stopped. Check your connection, then try again.";
  static constexpr const char* mismatch =
      "The download didn't match the expected file, so it was deleted. Try again.";

  ModelStoreFixture() {
    for (int i = 0; i < 10'000; ++i) content += static_cast<char>(i * 31 + i / 255);
    spec.fileName = "model.gguf";
    spec.address = "https://hub.example/model.gguf";
    spec.size = static_cast<std::int64_t>(content.size());
    spec.digest = digestOf(content);
    serve(content);
    reopen();
  }

  std::string digestOf(const std::string& bytes) const {
    write(folder.path / "digest", bytes);
    return sha256OfFile(folder.path / "digest", false).value();
  }
  static void write(const std::filesystem::path& file, const std::string& bytes) {
    std::ofstream(file, std::ios::binary) << bytes;
  }
  static std::string read(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
  }

  // By a server without any quirks.
  void serve(const std::string& bytes) {
    downloads.server = {};
    downloads.server.content = bytes;
  }
  // As another process would, or this one after its end.
  void reopen() {
    observation = {};
    store = std::make_unique<ModelStore>(ModelStore::Services{loop, downloads, background, disk, log}, spec,
                                         models);
    observation = store->observe([this] { phases.push_back(store->phase()); });
  }
  void install(const std::string& bytes, const std::string& digest) {
    std::filesystem::create_directories(models);
    write(models / "model.gguf", bytes);
    write(models / "model.gguf.verified", digest);
  }
  // With nothing but what the server has.
  void startOver(const std::string& served) {
    serve(served);
    std::filesystem::remove_all(models);
    reopen();
  }
  void fetch() {
    store->startDownload();
    loop.advance(Milliseconds(1000));
  }
  // Leaves some of the file behind.
  void fetchPart(std::int64_t bytes) {
    downloads.server.dropsAfter = bytes;
    fetch();
    downloads.server.dropsAfter = -1;
    ASSERT_EQ(store->phase().message, paused);
  }
  std::vector<std::string> names() const {
    std::vector<std::string> all;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(models, error))
      all.push_back(entry.path().filename().string());
    return all;
  }
  std::string header(std::string_view name) const {
    return std::string(headerValue(downloads.requests.back().headers, name));
  }
  void expectInstalled() {
    EXPECT_EQ(store->phase().state, installed) << store->phase().message;
    EXPECT_THAT(names(), testing::UnorderedElementsAre("model.gguf", "model.gguf.verified"));
    EXPECT_EQ(read(models / "model.gguf"), content);
    EXPECT_EQ(store->installedModel(), (models / "model.gguf").string());
  }

  TemporaryFolder folder;
  std::filesystem::path models = folder.path / "data" / "Models";
  VirtualMainLoop loop;
  ScriptedHttpDownloads downloads{loop};
  ScriptedBackgroundWork background{loop};
  ScriptedDiskSpace disk;
  RecordingSystemLog log;
  std::string content;
  ModelSpec spec;
  std::unique_ptr<ModelStore> store;
  std::vector<ModelPhase> phases;
  Task observation;
};

}  // namespace nimbletype
