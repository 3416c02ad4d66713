#include "text/format/timestamp.h"

#include <gtest/gtest.h>

namespace nimbletype::text {
namespace {

using namespace std::chrono_literals;

const Moment morning = std::chrono::sys_days{std::chrono::March / 7 / 2025} + 9h;

TEST(Timestamp, IsWrittenInUtc) {
  const std::vector<std::pair<Moment, std::string>> table{
      {morning, "2025-03-07T09:00:00Z"},
      {morning + 1ms, "2025-03-07T09:00:00.001Z"},
      {Moment(-1ms), "1969-12-31T23:59:59.999Z"},
      {std::chrono::sys_days{std::chrono::December / 31 / 9999} + 86399s, "9999-12-31T23:59:59Z"},
  };
  for (const auto& [moment, text] : table) {
    EXPECT_EQ(toIso8601(moment), text);
    EXPECT_EQ(fromIso8601(text), moment);
  }
}

TEST(Timestamp, IsReadWithAnyOffsetAndFraction) {
  const std::vector<std::pair<std::string, Moment>> table{
      {"2025-03-07T10:00:00+01:00", morning},
      {"2025-03-07T04:30:00-0430", morning},
      {"2025-03-07T09:00:00.5Z", morning + 500ms},
      {"2025-03-07T09:00:00.1239999Z", morning + 123ms},
      {"2024-02-29T00:00:00Z", std::chrono::sys_days{std::chrono::February / 29 / 2024}},
  };
  for (const auto& [text, moment] : table) EXPECT_EQ(fromIso8601(text), moment) << text;
  for (const char* other :
       {"", "2025-02-29T00:00:00Z", "2025-03-07T24:00:00Z", "2025-03-07T09:00:00", "2025-03-07T09:00Z",
        "2025-03-07 09:00:00Z", "2025-03-07T09:00:00Zx", "2025-3-7T09:00:00Z", "-025-03-07T09:00:00Z"})
    EXPECT_EQ(fromIso8601(other), std::nullopt) << other;
}

}  // namespace
}  // namespace nimbletype::text
