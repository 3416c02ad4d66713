#include "engines/store/body_place.h"

#include <gtest/gtest.h>

#include <tuple>

namespace nimbletype {
namespace {

using enum BodyPlace;

TEST(BodyPlace, FollowsFromTheReply) {
  using Headers = std::vector<HttpHeader>;
  const auto length = [](std::string text) { return Headers{{"Content-Length", std::move(text)}}; };
  const auto part = [](std::string text, const char* tag = "") {
    return Headers{{"content-range", "bytes " + std::move(text)}, {"ETag", tag}};
  };
  const std::tuple<int, Headers, std::int64_t, BodyPlace> table[] = {
      {200, length("1000"), 0, fromZero},
      {200, {}, 0, fromZero},
      {200, length("much"), 0, fromZero},
      {200, length("1000"), 400, fromZero},  // ranges are ignored, or the file has changed
      {203, length("1000"), 400, fromZero},
      {200, length("999"), 0, wrongFile},
      {200, length("600"), 400, wrongFile},
      {206, part("400-999/*"), 400, append},
      {206, part("400-499/1000"), 400, append},  // the rest is asked for next time
      {206, part("0-999/1000"), 0, append},
      {206, part("400-1000/1001"), 400, wrongFile},
      {206, part("399-999/1000"), 400, startOver},
      {206, part("400-999/1000", "\"v1\""), 400, append},
      {206, part("400-999/1000", "\"v2\""), 400, startOver},
      {206, part("400-999/1000", "W/\"v2\""), 400, append},
      {206, {}, 400, startOver},
      {206, part("400-999"), 400, startOver},
      {206, part("400-999/1000x"), 400, startOver},
      {206, part("-400-999/1000"), 400, startOver},
      {206, part("99999999999999999999-1/1000"), 400, startOver},
      {206, part("400-999/1000"), 0, unusable},
      {206, {}, 0, unusable},
      {416, part("*/300"), 400, startOver},
      {416, {}, 0, refused},
      {304, {}, 0, refused},
      {404, length("1000"), 0, refused},
      {503, {}, 400, refused}};
  for (const auto& [status, headers, held, place] : table)
    EXPECT_EQ(placeBody({status, headers}, held, 1000, "\"v1\""), place)
        << status << " with " << held << " held, " << (headers.empty() ? "" : headers.front().value);
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
