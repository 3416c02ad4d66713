#pragma once
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <optional>

#include "platform/network/http_downloads.h"
#include "platform/scripted/network/scripted_file_server.h"
#include "tools/stage/temporary_folder.h"

// What every `HttpDownloads` must do. Instantiate with a default-constructible harness that has
//   HttpDownloads& downloads();
//   void dropDownloads();    // destroys it
//   std::string address();   // http
//   // How the next request is answered, which will have these headers.
//   void serve(const ScriptedFileServer& server, const std::vector<HttpHeader>& headers);
//   int abandoned();         // transfers whose connection was closed from this side before their end
//   void waitFor(std::string what, std::function<bool()> condition);  // lets loop and server run
namespace nimbletype {

template <typename Harness>
struct HttpDownloadsConformance : testing::Test, Harness {
  struct Outcome {
    DownloadEnd end;
    std::optional<DownloadHead> head;
  };

  DownloadRequest request(std::vector<HttpHeader> headers = {}) {
    return {this->address(), std::move(headers), file, 1'000'000};
  }
  HttpDownloads::Handlers handlers(std::optional<std::int64_t> place) {
    return {[place](const DownloadHead&) { return place; },
            [this](std::int64_t size) { progress.push_back(size); },
            [this](const DownloadEnd& end, const auto& head) {
              ended = Outcome{end, head};
            }};
  }
  Task start(const DownloadRequest& wanted, std::optional<std::int64_t> place) {
    ended.reset();
    return this->downloads().start(wanted, handlers(place));
  }
  Outcome awaitEnd() {
    this->waitFor("the transfer to end", [&] { return ended.has_value(); });
    return *std::exchange(ended, std::nullopt);
  }
  Outcome outcomeOf(const ScriptedFileServer& served, const DownloadRequest& wanted,
                    std::optional<std::int64_t> place) {
    this->serve(served, wanted.headers);
    const Task task = start(wanted, place);
    EXPECT_FALSE(ended) << "told before the call was over";
    return awaitEnd();
  }
  // Begins a transfer that stops after so many bytes of 5000.
  Task startSilent(std::int64_t size) {
    this->serve({.content = std::string(5000, 'x'), .fallsSilentAfter = size}, {});
    Task task = start(request(), 0);
    this->waitFor(std::to_string(size) + " bytes", [&] { return content().size() == std::size_t(size); });
    return task;
  }
  std::string content() const {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
  }
  void fill(const std::string& bytes) const { std::ofstream(file, std::ios::binary) << bytes; }

  const TemporaryFolder folder;
  const std::filesystem::path file = folder.path / "file";
  std::vector<std::int64_t> progress;
  std::optional<Outcome> ended;
};
TYPED_TEST_SUITE_P(HttpDownloadsConformance);

TYPED_TEST_P(HttpDownloadsConformance, TheBodyGoesWhereItIsToldTo) {
  using enum DownloadEnd::Case;
  struct Case {
    std::string held, range;
    int status;
    std::optional<std::int64_t> place;
    DownloadEnd::Case result;
    std::string content;
  };
  const Case cases[] = {{"", "", 200, 0, complete, "0123456789"},
                        {"0123", "bytes=4-", 206, 4, complete, "0123456789"},
                        {"an older version", "", 200, 0, complete, "0123456789"},
                        {"0123xx", "bytes=4-", 206, 4, complete, "0123456789"},
                        {"held", "", 200, std::nullopt, turnedAway, "held"},
                        {"0123456789", "bytes=10-", 416, std::nullopt, turnedAway, "0123456789"},
                        {"short", "", 200, 6, notWritten, "short"}};
  for (const auto& [held, range, status, place, result, content] : cases) {
    SCOPED_TRACE(held + " " + range);
    this->fill(held);
    const auto headers =
        range.empty() ? std::vector<HttpHeader>() : std::vector<HttpHeader>{{"Range", range}};
    const auto outcome = this->outcomeOf({.content = "0123456789"}, this->request(headers), place);
    EXPECT_EQ(outcome.end.result, result) << outcome.end.detail;
    ASSERT_TRUE(outcome.head);
    EXPECT_EQ(outcome.head->status, status);
    EXPECT_EQ(headerValue(outcome.head->headers, "etag"), "\"v1\"");
    EXPECT_EQ(this->content(), content);
  }
}

TYPED_TEST_P(HttpDownloadsConformance, ReportsHowLongTheFileIs) {
  this->fill("0123");
  const std::string rest(300'000, 'x');
  const auto outcome = this->outcomeOf({.content = "0123" + rest}, this->request({{"Range", "bytes=4-"}}), 4);
  EXPECT_EQ(outcome.end.result, DownloadEnd::Case::complete);
  EXPECT_EQ(this->content(), "0123" + rest);
  ASSERT_FALSE(this->progress.empty());
  EXPECT_GE(this->progress.front(), 4);
  EXPECT_TRUE(std::ranges::is_sorted(this->progress));
  EXPECT_EQ(this->progress.back(), 300'004);
}

TYPED_TEST_P(HttpDownloadsConformance, EveryEndKeepsWhatCame) {
  using enum DownloadEnd::Case;
  const struct {
    ScriptedFileServer server;
    DownloadEnd::Case result;
    std::size_t kept;
  } cases[] = {{{.content = std::string(5000, 'x'), .dropsAfter = 2000}, dropped, 2000},
               {{.content = std::string(5000, 'x'), .fallsSilentAfter = 3000}, dropped, 3000},
               {{.content = std::string(1'000'001, 'x'), .bytesPerTick = 100'000}, tooLong, 1'000'000},
               {{.content = "never seen", .redirectsTo = "http://127.0.0.1/elsewhere"}, redirectRefused, 0},
               {{.reachable = false}, notConnected, 0}};
  for (const auto& [served, result, kept] : cases) {
    this->fill("");
    const auto outcome = this->outcomeOf(served, this->request(), 0);
    EXPECT_EQ(outcome.end.result, result) << outcome.end.detail;
    EXPECT_EQ(outcome.head.has_value(), kept > 0) << outcome.end.detail;
    EXPECT_EQ(this->content(), std::string(kept, 'x')) << outcome.end.detail;
  }
}

TYPED_TEST_P(HttpDownloadsConformance, WhatCannotBeWrittenIsToldInTheSystemsWords) {
  auto request = this->request();
  request.file = this->folder.path / "no folder" / "file";
  const auto outcome = this->outcomeOf({.content = "0123"}, request, 0);
  EXPECT_EQ(outcome.end.result, DownloadEnd::Case::notWritten);
  EXPECT_EQ(outcome.end.detail, "No such file or directory");
}

// As an owner does that keeps a note beside the file.
TYPED_TEST_P(HttpDownloadsConformance, TheFileMayBeRemovedBeforeItIsWritten) {
  this->fill("another version");
  auto handlers = this->handlers(0);
  handlers.place = [file = this->file](const DownloadHead&) { return std::filesystem::remove(file) ? 0 : 1; };
  this->serve({.content = "0123"}, {});
  const Task task = this->downloads().start(this->request(), handlers);
  EXPECT_EQ(this->awaitEnd().end.result, DownloadEnd::Case::complete);
  EXPECT_EQ(this->content(), "0123");
}

TYPED_TEST_P(HttpDownloadsConformance, OneFileTakesOneTransfer) {
  const Task first = this->startSilent(1000);
  const Task second = this->start(this->request(), 0);
  const auto outcome = this->awaitEnd();
  EXPECT_EQ(outcome.end.result, DownloadEnd::Case::notWritten);
  EXPECT_EQ(outcome.end.detail, "another download is under way");
  EXPECT_EQ(this->content(), std::string(1000, 'x'));
}

TYPED_TEST_P(HttpDownloadsConformance, ADestroyedTaskLeavesAFileThatCanBeGoneOnWith) {
  { const Task task = this->startSilent(3000); }
  const std::string content(5000, 'x');
  const auto rest = this->outcomeOf({.content = content}, this->request({{"Range", "bytes=3000-"}}), 3000);
  EXPECT_EQ(rest.end.result, DownloadEnd::Case::complete) << rest.end.detail;
  EXPECT_EQ(this->content(), content);
  this->waitFor("the connection to be closed", [&] { return this->abandoned() == 1; });
}

TYPED_TEST_P(HttpDownloadsConformance, HandlersMayReplaceOrDestroyTheirOwnTask) {
  this->serve({.content = "0123"}, {});
  Task task;
  bool stopped = false;
  auto first = this->handlers(0);
  first.done = [&](const auto&, const auto&) {
    const auto rest = this->request({{"Range", "bytes=4-"}});
    this->serve({.content = "0123456789", .bytesPerTick = 4}, rest.headers);
    auto second = this->handlers(4);
    second.progress = [&](std::int64_t) {
      task = {};
      stopped = true;
    };
    task = this->downloads().start(rest, second);
  };
  task = this->downloads().start(this->request(), first);
  this->waitFor("the second transfer's progress", [&] { return stopped; });
  EXPECT_FALSE(this->ended);
}

TYPED_TEST_P(HttpDownloadsConformance, TheDownloadsMayGoFirst) {
  const Task task = this->startSilent(3000);
  this->dropDownloads();
  EXPECT_EQ(this->content(), std::string(3000, 'x'));
  EXPECT_FALSE(this->ended);
}

REGISTER_TYPED_TEST_SUITE_P(HttpDownloadsConformance, TheBodyGoesWhereItIsToldTo, ReportsHowLongTheFileIs,
                            EveryEndKeepsWhatCame, WhatCannotBeWrittenIsToldInTheSystemsWords,
                            TheFileMayBeRemovedBeforeItIsWritten, OneFileTakesOneTransfer,
                            ADestroyedTaskLeavesAFileThatCanBeGoneOnWith,
                            HandlersMayReplaceOrDestroyTheirOwnTask, TheDownloadsMayGoFirst);

}  // namespace nimbletype
