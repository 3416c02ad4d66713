#include "engines/store/body_place.h"

#include <gtest/gtest.h>

namespace nimbletype {
namespace {

using enum BodyPlace;

TEST(BodyPlace, FollowsFromTheReply) {
  struct Row {
    int status;
    std::vector<HttpHeader> headers;
    std::int64_t held;
    BodyPlace place;
  };
  const auto range = [](std::string text) { return HttpHeader{"content-range", std::move(text)}; };
  const auto length = [](std::string text) { return HttpHeader{"Content-Length", std::move(text)}; };
  const std::vector<Row> table{
      {200, {length("1000")}, 0, fromZero},
      {200, {}, 0, fromZero},
      {200, {length("much")}, 0, fromZero},
      {200, {length("1000")}, 400, fromZero},  // ranges are ignored, or the file has changed
      {203, {length("1000")}, 400, fromZero},
      {200, {length("999")}, 0, wrongFile},
      {200, {length("600")}, 400, wrongFile},
      {206, {range("bytes 400-999/1000"), length("600")}, 400, append},
      {206, {range("bytes 400-999/*")}, 400, append},
      {206, {range("bytes 400-499/1000")}, 400, append},  // the rest is asked for next time
      {206, {range("bytes 0-999/1000")}, 0, append},
      {206, {range("bytes 400-1000/1001")}, 400, wrongFile},
      {206, {range("bytes 399-999/1000")}, 400, startOver},
      {206, {range("bytes 0-999/1000")}, 400, startOver},
      {206, {range("bytes 400-999/1000"), {"ETag", "\"v1\""}}, 400, append},
      {206, {range("bytes 400-999/1000"), {"ETag", "\"v2\""}}, 400, startOver},
      {206, {range("bytes 400-999/1000"), {"ETag", "W/\"v2\""}}, 400, append},
      {206, {}, 400, startOver},
      {206, {range("bytes 400-999")}, 400, startOver},
      {206, {range("bytes 400-999/1000x")}, 400, startOver},
      {206, {range("bytes -400-999/1000")}, 400, startOver},
      {206, {range("bytes 99999999999999999999-1/1000")}, 400, startOver},
      {206, {range("bytes 400-999/1000")}, 0, unusable},
      {206, {}, 0, unusable},
      {416, {range("bytes */300")}, 400, startOver},
      {416, {}, 0, refused},
      {304, {}, 0, refused},
      {404, {length("1000")}, 0, refused},
      {503, {}, 400, refused},
  };
  for (const Row& row : table)
    EXPECT_EQ(placeBody({row.status, row.headers}, row.held, 1000, "\"v1\""), row.place)
        << row.status << " with " << row.held << " held, "
        << (row.headers.empty() ? "" : row.headers.front().value);
}

TEST(BodyPlace, AsksForWhatIsMissingOfTheSameVersion) {
  using Headers = std::vector<HttpHeader>;
  const HttpHeader identity{"Accept-Encoding", "identity"}, range{"Range", "bytes=7-"};
  EXPECT_EQ(headersToResume(0, "\"v1\""), Headers({identity}));
  EXPECT_EQ(headersToResume(7, ""), Headers({identity, range}));
  EXPECT_EQ(headersToResume(7, "\"v1\""), Headers({identity, range, {"If-Range", "\"v1\""}}));
}

TEST(BodyPlace, TrustsOnlyExactNamesOfAVersion) {
  const std::string date = "Fri, 07 Mar 2025 09:00:00 GMT";
  EXPECT_EQ(validatorOf({200, {{"etag", "\"v1\""}, {"Last-Modified", date}}}), "\"v1\"");
  EXPECT_EQ(validatorOf({200, {{"ETag", "W/\"v1\""}, {"Last-Modified", date}}}), date);
  EXPECT_EQ(validatorOf({200, {}}), "");
}

}  // namespace
}  // namespace nimbletype
