#include "engines/store/model_store.h"

#include "tests/engines/store/model_store_fixture.h"

namespace nimbletype {
namespace {

namespace fs = std::filesystem;

using ModelStoreTest = ModelStoreFixture;

TEST_F(ModelStoreTest, FetchesChecksAndInstalls) {
  fetch();
  expectInstalled();
  ASSERT_GE(phases.size(), 4U);
  EXPECT_EQ(phases.front(), (ModelPhase{downloading, 0, 10'000, {}}));
  EXPECT_EQ(phases[phases.size() - 3], (ModelPhase{downloading, 10'000, 10'000, {}}));
  EXPECT_EQ(phases[phases.size() - 2].state, checking);
  EXPECT_EQ(std::ranges::adjacent_find(phases), phases.end());
  EXPECT_EQ(header("Range"), "");
}

TEST_F(ModelStoreTest, SaysWhyItFailedAndKeepsOnlyWhatIsOfUse) {
  struct Row {
    const char* name;
    std::function<void()> arrange;
    std::string message;
  };
  auto& server = downloads.server;
  const std::vector<Row> table{
      {"overloaded", [&] { server.status = 503; }, "The download server answered 503. Try again later."},
      {"unreachable", [&] { server.reachable = false; }, stopped},
      {"plain redirect", [&] { server.redirectsTo = "http://hub.example/x"; }, stopped},
      {"dropped at once", [&] { server.dropsAfter = 0; }, stopped},
      {"dropped later", [&] { server.dropsAfter = 3000; }, paused},
      {"one byte short", [&] { server.dropsAfter = 9999; }, paused},
      {"silent", [&] { server.fallsSilentAfter = 3000; }, paused},
      {"too slow", [&] { server.tick = std::chrono::hours(1); }, paused},
      {"shorter", [&] { server.content.pop_back(); }, mismatch},
      {"longer", [&] { server.content += "x"; }, mismatch},
      {"longer than told", [&] { server.content += "x", server.announcesLength = false; }, mismatch},
      {"ends early", [&] { server.content.resize(3000), server.announcesLength = false; }, paused},
      {"corrupted", [&] { server.content.assign(10'000, 'x'); }, mismatch},
      {"an unwanted part",
       [&] {
         server.status = 206, server.headers = {{"Content-Range", "bytes 5-9/10000"}};
       },
       stopped},
      {"no room", [&] { disk.bytes = 1'000'009'999; },
       "This Mac needs 1 GB free for the download. Free up some space, then try again."}};
  for (const Row& row : table) {
    SCOPED_TRACE(row.name);
    startOver(content);
    disk.bytes = 1'000'010'000;
    row.arrange();
    store->startDownload();
    loop.advance(std::chrono::hours(6));
    EXPECT_EQ(store->phase(), (ModelPhase{failed, 0, 0, row.message}));
    EXPECT_EQ(store->installedModel(), std::nullopt);
    const bool keepsPart = row.message == paused;
    EXPECT_EQ(names().empty(), !keepsPart);

    serve(content);
    disk.bytes = 1'000'010'000 - (keepsPart ? 1 : 0);  // what is there already needs no room
    fetch();
    expectInstalled();
    EXPECT_EQ(!header("Range").empty(), keepsPart);
  }
}

TEST_F(ModelStoreTest, GoesOnWhereItStopped) {
  fetchPart(3000);
  downloads.server.dropsAfter = 2000;
  reopen();
  fetch();
  EXPECT_EQ(header("Range"), "bytes=3000-");
  EXPECT_EQ(header("If-Range"), "\"v1\"");
  downloads.server.dropsAfter = -1;
  phases.clear();
  fetch();
  EXPECT_EQ(header("Range"), "bytes=5000-");
  EXPECT_EQ(phases.front(), (ModelPhase{downloading, 5000, 10'000, {}}));
  expectInstalled();
}

// Whatever has become of the part or of the server's file, the right one arrives in the end.
TEST_F(ModelStoreTest, BeginsAnewWhenItCannotGoOn) {
  struct Row {
    const char* name;
    std::function<void()> change;
    bool asksForRest;
  };
  const auto note = models / ".partial-model.gguf.json", part = models / ".partial-model.gguf";
  const auto writeNote = [&](const std::string& address, const std::string& digest) {
    write(note, R"({"url":")" + address + R"(","digest":")" + digest + "\"}");
  };
  const std::vector<Row> table{
      {"another version", [&] { downloads.server.etag = "\"v2\""; }, true},
      {"ranges ignored", [&] { downloads.server.honoursRanges = false; }, true},
      {"note lost", [&] { fs::remove(note); }, false},
      {"note torn", [&] { write(note, read(note).substr(0, 20)); }, false},
      {"part lost", [&] { fs::remove(part); }, false},
      {"part too long", [&] { fs::resize_file(part, 10'001); }, false},
      {"another model", [&] { writeNote(spec.address, "0"); }, false},
      {"another address", [&] { writeNote("https://a.example/", spec.digest); }, false}};
  for (const Row& row : table) {
    SCOPED_TRACE(row.name);
    startOver(std::string(10'000, 'x'));
    fetchPart(3000);
    downloads.server.content = content;
    row.change();
    reopen();
    fetch();
    EXPECT_EQ(!header("Range").empty(), row.asksForRest);
    expectInstalled();
  }
}

TEST_F(ModelStoreTest, AsksOnceForTheWholeWhenItsPartIsRefused) {
  for (const bool isRefusedAgain : {false, true}) {
    startOver(content);
    fetchPart(3000);
    downloads.server.status = 416;
    const auto watch = store->observe([&] {
      if (store->phase().bytesWritten == 0 && !isRefusedAgain) downloads.server.status = 0;
    });
    const auto asked = downloads.requests.size();
    fetch();
    EXPECT_EQ(downloads.requests.size(), asked + 2);
    EXPECT_EQ(header("Range"), "");
    if (!isRefusedAgain) expectInstalled();
  }
  EXPECT_EQ(store->phase().message, "The download server answered 416. Try again later.");
}

TEST_F(ModelStoreTest, CancelledItKeepsWhatCame) {
  store->startDownload();
  loop.advance(Milliseconds(4));
  const auto held = store->phase().bytesWritten;
  ASSERT_GT(held, 0);
  store->cancelDownload();
  EXPECT_EQ(store->phase().state, notDownloaded);
  loop.advance(std::chrono::hours(7));
  EXPECT_EQ(store->phase().state, notDownloaded);
  fetch();
  EXPECT_EQ(header("Range"), "bytes=" + std::to_string(held) + "-");
  expectInstalled();
  for (const auto moment : {downloading, checking}) {  // by whoever hears of it
    startOver(content);
    const auto watch = store->observe([&] {
      if (store->phase().state == moment) store->cancelDownload();
    });
    fetch();
    EXPECT_EQ(store->phase().state, notDownloaded);
  }
  fetch();
  expectInstalled();
}

TEST_F(ModelStoreTest, FetchesNothingWhenAllIsThereButTheCheck) {
  background.hold();
  fetch();
  EXPECT_EQ(store->phase().state, checking);
  EXPECT_THAT(names(), testing::ElementsAre(".incoming-model.gguf"));
  store->cancelDownload();
  background.release();
  const auto incoming = models / ".incoming-model.gguf";
  const std::vector<std::function<void()>> table{
      [] {}, [&] { write(models / ".partial-model.gguf", "of an earlier attempt"); },
      [&] {  // ended between the two steps of the installation
        fs::remove_all(models / "model.gguf.verified");
        if (fs::exists(models / "model.gguf")) fs::remove(incoming);
      },
      [&] {  // ended after the last byte
        fs::rename(incoming, models / ".partial-model.gguf");
        write(models / ".partial-model.gguf.json",
              R"({"url":")" + spec.address + R"(","digest":")" + spec.digest + "\"}");
      }};
  disk.bytes = 0;
  for (const auto& change : table) {
    fs::create_directories(models);
    write(incoming, content);
    change();
    reopen();
    store->startDownload();
    EXPECT_EQ(store->phase().state, checking);
    loop.advance(Milliseconds(1000));
    expectInstalled();
  }
  EXPECT_EQ(downloads.requests.size(), 1U);
}

TEST_F(ModelStoreTest, AnEarlierModelStaysUntilTheNewOneIsChecked) {
  for (const std::string& earlier : {content, std::string(10'000, 'o')}) {
    const bool isThisVersion = earlier == content;
    install(earlier, digestOf(earlier));
    reopen();
    const auto usable = store->installedModel();
    EXPECT_EQ(usable.has_value(), isThisVersion);
    serve('!' + content.substr(1));
    store->startDownload();
    loop.advance(Milliseconds(4));
    EXPECT_EQ(store->phase().state, downloading);
    EXPECT_EQ(store->installedModel(), usable);
    loop.advance(Milliseconds(1000));
    EXPECT_EQ(store->phase(), (ModelPhase{failed, 0, 0, mismatch}));
    EXPECT_EQ(store->installedModel(), usable);
    EXPECT_EQ(store->phase().state, failed);
    EXPECT_EQ(read(models / "model.gguf"), earlier);
    EXPECT_THAT(names(), testing::UnorderedElementsAre("model.gguf", "model.gguf.verified"));
  }
  serve(content);
  fetch();
  expectInstalled();
}

TEST_F(ModelStoreTest, IsInstalledOnlyWithItsSizeAndItsMarker) {
  const auto model = models / "model.gguf", marker = models / "model.gguf.verified";
  const std::vector<std::function<void()>> table{[] {},
                                                 [&] { fs::remove(marker); },
                                                 [&] { write(marker, std::string(64, '0')); },
                                                 [&] { write(marker, spec.digest + "\n"); },
                                                 [&] { write(marker, spec.digest.substr(1)); },
                                                 [&] { write(model, content + "x"); },
                                                 [&] { write(model, content.substr(1)); },
                                                 [&] { fs::remove(model); }};
  for (std::size_t i = 0; i < table.size(); ++i) {
    install(content, spec.digest);
    table[i]();
    reopen();
    EXPECT_EQ(store->phase().state, i == 0 ? installed : notDownloaded) << i;
    EXPECT_EQ(store->installedModel().has_value(), i == 0) << i;
  }
}

TEST_F(ModelStoreTest, NoticesWhatOtherProcessesDo) {
  install(content, spec.digest);
  EXPECT_TRUE(store->installedModel());
  fs::remove(models / "model.gguf");
  store->refresh();
  store->refresh();
  store->deleteModel();
  EXPECT_THAT(phases, testing::ElementsAre(ModelPhase{installed, 0, 0, {}}, ModelPhase{}));
}

TEST_F(ModelStoreTest, DeletesAllOfIt) {
  const std::vector<std::function<void()>> table{
      [&] { fetch(); }, [&] { fetchPart(3000); },
      [&] { store->startDownload(), loop.advance(Milliseconds(4)); }, [&] { background.hold(), fetch(); }};
  for (const auto& reach : table) {
    reach();
    ASSERT_FALSE(names().empty());
    store->deleteModel();
    background.release();
    loop.advance(Milliseconds(1000));
    EXPECT_EQ(store->phase(), ModelPhase{});
    EXPECT_THAT(names(), testing::IsEmpty());
  }
}

TEST_F(ModelStoreTest, ReportsADiskThatDoesNotTakeIt) {
  fs::create_directories(models.parent_path());
  write(models, "a file in the way");
  fetch();
  EXPECT_THAT(store->phase().message, testing::StartsWith("The download couldn't be saved: "));
  fs::remove(models);

  for (const char* name : {"model.gguf", "model.gguf.verified"}) {
    fs::create_directories(models / name / "in the way");
    fetch();
    EXPECT_EQ(store->phase().message, "The model couldn't be saved: Is a directory");
    fs::remove_all(models / name);
  }
  fetch();
  EXPECT_EQ(downloads.requests.size(), 1U);
  expectInstalled();
}

}  // namespace
}  // namespace nimbletype
