#include "text/format/timestamp.h"

#include <array>
#include <cstdio>

namespace nimbletype::text {
namespace {

using namespace std::chrono;

// Takes text from the front piece by piece; the first piece that does not fit makes the whole fail.
class Scanner {
 public:
  explicit Scanner(std::string_view s) : rest_(s) {}

  bool failed() const { return failed_; }
  bool finished() const { return !failed_ && rest_.empty(); }

  int number(std::size_t digits) {
    if (rest_.size() < digits) failed_ = true;
    int value = 0;
    for (std::size_t i = 0; i < digits && !failed_; ++i) {
      if (!nextIsDigit())
        failed_ = true;
      else
        value = value * 10 + take() - '0';
    }
    return value;
  }
  bool accept(char c) {
    if (failed_ || rest_.empty() || rest_.front() != c) return false;
    take();
    return true;
  }
  void expect(char c) { failed_ = !accept(c) || failed_; }
  bool nextIsDigit() const { return !rest_.empty() && rest_.front() >= '0' && rest_.front() <= '9'; }

 private:
  char take() {
    const char c = rest_.front();
    rest_.remove_prefix(1);
    return c;
  }
  std::string_view rest_;
  bool failed_ = false;
};

std::optional<sys_days> readDay(Scanner& in) {
  const int y = in.number(4);
  in.expect('-');
  const int m = in.number(2);
  in.expect('-');
  const int d = in.number(2);
  const year_month_day day{year(y), month(static_cast<unsigned>(m)),
                           std::chrono::day(static_cast<unsigned>(d))};
  return !in.failed() && day.ok() ? std::optional<sys_days>(day) : std::nullopt;
}

// Digits beyond milliseconds are read and dropped.
milliseconds readFraction(Scanner& in) {
  int value = 0;
  int scale = 100;
  for (; in.nextIsDigit(); scale /= 10) value += in.number(1) * scale;
  return milliseconds(value);
}

std::optional<milliseconds> readTime(Scanner& in) {
  const int h = in.number(2);
  in.expect(':');
  const int m = in.number(2);
  in.expect(':');
  const int s = in.number(2);
  const auto fraction = in.accept('.') ? readFraction(in) : milliseconds(0);
  if (in.failed() || h > 23 || m > 59 || s > 59) return std::nullopt;
  return hours(h) + minutes(m) + seconds(s) + fraction;
}

std::optional<minutes> readOffset(Scanner& in) {
  if (in.accept('Z')) return minutes(0);
  const int sign = in.accept('-') ? -1 : 1;
  if (sign > 0) in.expect('+');
  const int h = in.number(2);
  in.accept(':');
  const int m = in.number(2);
  if (in.failed() || h > 23 || m > 59) return std::nullopt;
  return sign * (hours(h) + minutes(m));
}

}  // namespace

std::string toIso8601(Moment moment) {
  const auto midnight = floor<days>(moment);
  const year_month_day day(midnight);
  const hh_mm_ss time(moment - midnight);
  std::array<char, 64> out{};
  std::snprintf(out.data(), out.size(), "%04d-%02u-%02uT%02d:%02d:%02d", static_cast<int>(day.year()),
                static_cast<unsigned>(day.month()), static_cast<unsigned>(day.day()),
                static_cast<int>(time.hours().count()), static_cast<int>(time.minutes().count()),
                static_cast<int>(time.seconds().count()));
  std::string text = out.data();
  if (const auto fraction = static_cast<int>(time.subseconds().count()); fraction != 0) {
    std::snprintf(out.data(), out.size(), ".%03d", fraction);
    text += out.data();
  }
  return text + "Z";
}

std::optional<Moment> fromIso8601(std::string_view s) {
  Scanner in(s);
  const auto day = readDay(in);
  in.expect('T');
  const auto time = readTime(in);
  const auto offset = readOffset(in);
  if (!day || !time || !offset || !in.finished()) return std::nullopt;
  return *day + *time - *offset;
}

}  // namespace nimbletype::text
