#pragma once
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <optional>

#include "platform/network/http_downloads.h"
#include "platform/scripted/network/scripted_file_server.h"

// What every `HttpDownloads` must do. Instantiate with a default-constructible harness that has
//   HttpDownloads& downloads();
//   void dropDownloads();    // destroys it
//   std::string address();   // http
//   // How the next request is answered, which will have these headers.
//   void serve(const ScriptedFileServer& server, const std::vector<HttpHeader>& headers);
//   int abandoned();         // transfers whose connection was closed from this side before their end
//   bool runUntil(std::function<bool()> done);  // lets loop and server run; false when it gave up
namespace nimbletype {

template <typename Harness>
class HttpDownloadsConformance : public testing::Test {
 protected:
  struct Outcome {
    DownloadEnd end;
    std::optional<DownloadHead> head;
  };

  HttpDownloadsConformance() {
    auto name = (std::filesystem::temp_directory_path() / "nimbletype-XXXXXX").string();
    folder_ = ::mkdtemp(name.data());
    file_ = folder_ / "file";
  }
  ~HttpDownloadsConformance() override { std::filesystem::remove_all(folder_); }

  DownloadRequest request(std::vector<HttpHeader> headers = {}) {
    return {harness_.address(), std::move(headers), file_, 1'000'000};
  }
  HttpDownloads::Handlers handlers(std::optional<std::int64_t> place) {
    return {[place](const DownloadHead&) { return place; },
            [this](std::int64_t size) { progress_.push_back(size); },
            [this](const DownloadEnd& end, const auto& head) {
              outcome_ = Outcome{end, head};
            }};
  }
  Outcome awaitEnd() {
    EXPECT_TRUE(harness_.runUntil([&] { return outcome_.has_value(); })) << "the transfer never ended";
    return std::exchange(outcome_, std::nullopt).value_or(Outcome{});
  }
  Outcome outcomeOf(const ScriptedFileServer& server, const DownloadRequest& request,
                    std::optional<std::int64_t> place) {
    harness_.serve(server, request.headers);
    const Task task = harness_.downloads().start(request, handlers(place));
    EXPECT_FALSE(outcome_) << "told before the call was over";
    return awaitEnd();
  }
  void awaitSize(std::uintmax_t size) {
    EXPECT_TRUE(harness_.runUntil([&] {
      std::error_code error;
      return std::filesystem::file_size(file_, error) == size;
    })) << "the file never had "
        << size << " bytes";
  }
  std::string content() const {
    std::ifstream file(file_, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  void fill(const std::string& bytes) const { std::ofstream(file_, std::ios::binary) << bytes; }

  std::filesystem::path folder_, file_;
  std::vector<std::int64_t> progress_;
  std::optional<Outcome> outcome_;
  Harness harness_;
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
    this->fill(held);
    const auto headers =
        range.empty() ? std::vector<HttpHeader>() : std::vector<HttpHeader>{{"Range", range}};
    const auto outcome = this->outcomeOf({.content = "0123456789"}, this->request(headers), place);
    EXPECT_EQ(outcome.end.result, result) << held << range << outcome.end.detail;
    ASSERT_TRUE(outcome.head) << held << range;
    EXPECT_EQ(outcome.head->status, status);
    EXPECT_EQ(headerValue(outcome.head->headers, "etag"), "\"v1\"");
    EXPECT_EQ(this->content(), content) << held << range;
  }
}

TYPED_TEST_P(HttpDownloadsConformance, ReportsHowLongTheFileIs) {
  this->fill("0123");
  const std::string rest(300'000, 'x');
  const auto outcome = this->outcomeOf({.content = "0123" + rest}, this->request({{"Range", "bytes=4-"}}), 4);
  EXPECT_EQ(outcome.end.result, DownloadEnd::Case::complete);
  EXPECT_EQ(this->content(), "0123" + rest);
  ASSERT_FALSE(this->progress_.empty());
  EXPECT_GE(this->progress_.front(), 4);
  EXPECT_TRUE(std::ranges::is_sorted(this->progress_));
  EXPECT_EQ(this->progress_.back(), 300'004);
}

TYPED_TEST_P(HttpDownloadsConformance, EveryEndKeepsWhatCame) {
  using enum DownloadEnd::Case;
  struct Case {
    ScriptedFileServer server;
    DownloadEnd::Case result;
    std::size_t kept;
  };
  const std::string content(5000, 'x');
  ScriptedFileServer drops{.content = content}, silent = drops, away = drops, plain = drops;
  drops.dropsAfter = 2000;
  silent.fallsSilentAfter = 3000;
  plain.redirectsTo = "http://127.0.0.1/elsewhere";
  away.reachable = false;
  const Case cases[] = {
      {drops, dropped, 2000},
      {silent, dropped, 3000},
      {{.content = std::string(1'000'001, 'x'), .bytesPerTick = 100'000}, tooLong, 1'000'000},
      {plain, redirectRefused, 0},
      {away, notConnected, 0}};
  for (const auto& [server, result, kept] : cases) {
    this->fill("");
    const auto outcome = this->outcomeOf(server, this->request(), 0);
    EXPECT_EQ(outcome.end.result, result) << outcome.end.detail;
    EXPECT_EQ(outcome.head.has_value(), kept > 0) << outcome.end.detail;
    EXPECT_EQ(this->content(), std::string(kept, 'x')) << outcome.end.detail;
  }
}

TYPED_TEST_P(HttpDownloadsConformance, WhatCannotBeWrittenIsToldInTheSystemsWords) {
  auto request = this->request();
  request.file = this->folder_ / "no folder" / "file";
  const auto outcome = this->outcomeOf({.content = "0123"}, request, 0);
  EXPECT_EQ(outcome.end.result, DownloadEnd::Case::notWritten);
  EXPECT_EQ(outcome.end.detail, "No such file or directory");
}

// As an owner does that keeps a note beside the file.
TYPED_TEST_P(HttpDownloadsConformance, TheFileMayBeRemovedBeforeItIsWritten) {
  this->fill("another version");
  auto handlers = this->handlers(0);
  handlers.place = [file = this->file_](const DownloadHead&) {
    std::filesystem::remove(file);
    return 0;
  };
  this->harness_.serve({.content = "0123"}, {});
  const Task task = this->harness_.downloads().start(this->request(), handlers);
  EXPECT_EQ(this->awaitEnd().end.result, DownloadEnd::Case::complete);
  EXPECT_EQ(this->content(), "0123");
}

TYPED_TEST_P(HttpDownloadsConformance, OneFileTakesOneTransfer) {
  ScriptedFileServer endless{.content = std::string(5000, 'x')};
  endless.fallsSilentAfter = 1000;
  this->harness_.serve(endless, {});
  bool firstEnded = false;
  auto handlers = this->handlers(0);
  handlers.done = [&](const auto&, const auto&) { firstEnded = true; };
  const Task first = this->harness_.downloads().start(this->request(), handlers);
  this->awaitSize(1000);
  const Task second = this->harness_.downloads().start(this->request(), this->handlers(0));
  const auto outcome = this->awaitEnd();
  EXPECT_EQ(outcome.end.result, DownloadEnd::Case::notWritten);
  EXPECT_EQ(outcome.end.detail, "another download is under way");
  EXPECT_FALSE(firstEnded);
  EXPECT_EQ(this->content(), std::string(1000, 'x'));
}

TYPED_TEST_P(HttpDownloadsConformance, ADestroyedTaskLeavesAFileThatCanBeGoneOnWith) {
  const std::string content(5000, 'x');
  ScriptedFileServer silent{.content = content};
  silent.fallsSilentAfter = 3000;
  this->harness_.serve(silent, {});
  {
    const Task task = this->harness_.downloads().start(this->request(), this->handlers(0));
    this->awaitSize(3000);
  }
  const auto rest = this->outcomeOf({.content = content}, this->request({{"Range", "bytes=3000-"}}), 3000);
  EXPECT_EQ(rest.end.result, DownloadEnd::Case::complete) << rest.end.detail;
  EXPECT_EQ(this->content(), content);
  EXPECT_TRUE(this->harness_.runUntil([&] { return this->harness_.abandoned() == 1; }))
      << "the connection stayed open";
}

TYPED_TEST_P(HttpDownloadsConformance, HandlersMayReplaceOrDestroyTheirOwnTask) {
  this->harness_.serve({.content = "0123"}, {});
  Task task;
  bool stopped = false;
  auto first = this->handlers(0);
  first.done = [&](const auto&, const auto&) {
    this->harness_.serve({.content = "0123456789", .bytesPerTick = 4}, {{"Range", "bytes=4-"}});
    auto second = this->handlers(4);
    second.progress = [&](std::int64_t) {
      task = {};
      stopped = true;
    };
    task = this->harness_.downloads().start(this->request({{"Range", "bytes=4-"}}), second);
  };
  task = this->harness_.downloads().start(this->request(), first);
  EXPECT_TRUE(this->harness_.runUntil([&] { return stopped; }))
      << "the second transfer never came to anything";
  EXPECT_FALSE(this->outcome_);
}

TYPED_TEST_P(HttpDownloadsConformance, TheDownloadsMayGoFirst) {
  ScriptedFileServer silent{.content = std::string(5000, 'x')};
  silent.fallsSilentAfter = 3000;
  this->harness_.serve(silent, {});
  const Task task = this->harness_.downloads().start(this->request(), this->handlers(0));
  this->awaitSize(3000);
  this->harness_.dropDownloads();
  EXPECT_EQ(this->content(), std::string(3000, 'x'));
  EXPECT_FALSE(this->outcome_);
}

REGISTER_TYPED_TEST_SUITE_P(HttpDownloadsConformance, TheBodyGoesWhereItIsToldTo, ReportsHowLongTheFileIs,
                            EveryEndKeepsWhatCame, WhatCannotBeWrittenIsToldInTheSystemsWords,
                            TheFileMayBeRemovedBeforeItIsWritten, OneFileTakesOneTransfer,
                            ADestroyedTaskLeavesAFileThatCanBeGoneOnWith,
                            HandlersMayReplaceOrDestroyTheirOwnTask, TheDownloadsMayGoFirst);

}  // namespace nimbletype
