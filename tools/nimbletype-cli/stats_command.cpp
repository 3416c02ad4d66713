#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <optional>

#include "cli.h"
#include "desktop.h"
#include "options.h"
#include "personal/stats/stats_store.h"
#include "personal/stats/stats_text.h"
#include "platform/storage/file_store.h"
#include "stats_chart.h"
#include "text/format/number_format.h"

namespace nimbletype::cli {
namespace {

constexpr const char* help = R"(usage: nimbletype-cli stats [options]

Shows the words that suggestions saved you today, this week and on each of the last 30 days. Reads the application's
own figures and changes nothing.

  --file FILE       read this file instead
  --json            everything as one JSON object, the days oldest first

Exit status: 0, also when nothing was counted yet; 1 when the file cannot be read; 2 for wrong arguments.
)";

constexpr int daysShown = 30;
constexpr std::size_t appsShown = 3;

// A file's content that nobody writes.
class ReadContent : public FileStore {
 public:
  explicit ReadContent(std::optional<std::string> content) : content_(std::move(content)) {}
  std::optional<std::string> read() const override { return content_; }
  bool write(const std::string&) override { return false; }
  bool setAside() override { return makesSense_ = !content_; }
  bool erase() override { return false; }
  bool makesSense() const { return makesSense_; }

 private:
  std::optional<std::string> content_;
  bool makesSense_ = true;
};

// A folder opens, but cannot be read.
std::optional<std::string> contentOf(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  if (in.peek(); in.bad() || !in.is_open()) return std::nullopt;
  return std::string(std::istreambuf_iterator<char>(in), {});
}

DayStats sum(const std::vector<StatsStore::DatedStats>& days) {
  DayStats total;
  for (const auto& [date, day] : days) {
    total.words += day.words;
    total.accepts += day.accepts;
    total.shown += day.shown;
  }
  return total;
}

// Everything about one store in the words of one locale.
class Report {
 public:
  Report(const StatsStore& stats, const Region& region)
      : stats_(stats), locale_(region.locale), calendar_(region.timeZone) {}

  void print(bool inColour) const {
    std::printf("%s\n\n", stats_.summary().c_str());
    line("Today", figures(stats_.today()));
    line("This week", figures(sum(stats_.lastDays(StatsStore::daysOfWeek))));
    line("All time",
         figures(
             {.words = stats_.totalWords(), .accepts = stats_.totalAccepts(), .shown = stats_.totalShown()}) +
             ", " + minutesText(minutesSaved(stats_.totalWords()), locale_) + " of typing");
    line("Streak", streakText(stats_.streak(), locale_));
    if (const auto typical = stats_.typicalLatency())
      line("Wait", number(*typical) + " ms typically, 9 in 10 within " +
                       number(stats_.nineInTenLatency().value_or(0)) + " ms");
    line("Today in", apps());
    chart(inColour);
  }

  nlohmann::ordered_json json() const {
    nlohmann::ordered_json days = nlohmann::ordered_json::array();
    for (const auto& [date, day] : stats_.lastDays(daysShown))
      days.push_back({{"date", text::dayKey(calendar_.dayOf(date))},
                      {"words", day.words},
                      {"characters", day.characters},
                      {"accepts", day.accepts},
                      {"shown", day.shown},
                      {"apps", day.apps}});
    nlohmann::ordered_json latency{{"typical", nullptr}, {"nineInTen", nullptr}};
    if (const auto typical = stats_.typicalLatency())
      latency = {{"typical", *typical}, {"nineInTen", *stats_.nineInTenLatency()}};
    return {{"summary", stats_.summary()},
            {"streak", stats_.streak()},
            {"wordsThisWeek", stats_.wordsThisWeek()},
            {"totalWords", stats_.totalWords()},
            {"totalAccepts", stats_.totalAccepts()},
            {"totalShown", stats_.totalShown()},
            {"milliseconds", latency},
            {"apps", stats_.appTotals()},
            {"days", days}};
  }

 private:
  std::string number(std::int64_t value) const { return text::formatNumber(value, locale_); }

  std::string figures(const DayStats& day) const {
    return wordCountText(day.words, locale_) + " saved, " + number(day.accepts) + " accepted, " +
           number(day.shown) + " shown";
  }

  std::string apps() const {
    std::string list;
    std::size_t shown = 0;
    for (const auto& [key, words] : stats_.topAppsToday()) {
      if (words == 0 || shown++ == appsShown) break;
      list += (list.empty() ? "" : ", ") + key.substr(key.find(':') + 1) + " " + number(words);
    }
    return list;
  }

  void chart(bool inColour) const {
    std::vector<ChartDay> days;
    for (const auto& [date, day] : stats_.lastDays(daysShown))
      days.push_back({calendar_.dayOf(date), day.words});
    if (std::ranges::all_of(days, [](const ChartDay& day) { return day.words == 0; })) return;
    std::printf("\nWords a day\n");
    for (const auto& [axis, bars] : wordChart(days, locale_))
      std::printf("%s%s%s%s\n", axis.c_str(), inColour ? "\033[33m" : "", bars.c_str(),
                  inColour ? "\033[0m" : "");
  }

  static void line(const char* label, const std::string& text) {
    if (!text.empty()) std::printf("%-10s %s\n", label, text.c_str());
  }

  const StatsStore& stats_;
  std::string locale_;
  text::LocalCalendar calendar_;
};

bool wantsColour() {
  const char* refused = std::getenv("NO_COLOR");
  return isatty(STDOUT_FILENO) != 0 && !(refused && *refused);
}

}  // namespace

int stats(Arguments arguments) {
  std::optional<std::string> named;
  bool json = false;
  Options options("stats", help);
  options.value("--file", named, "a file");
  options.flag("--json", json);
  if (const auto status = options.read(arguments)) return *status;
  const auto desktop = makeDesktop();
  const std::filesystem::path path = named.value_or((desktop->dataFolder() / "stats.json").string());
  ReadContent file(contentOf(path));
  std::error_code error;
  // Without a file nothing was counted yet, unless somebody says there is one.
  if (!file.read() && (named || std::filesystem::exists(path, error)))
    return options.complain(path.string() + " cannot be read", 1);
  const StatsStore store(file, desktop->loop(), desktop->log(), desktop->region());
  if (!file.makesSense()) return options.complain(path.string() + " holds no statistics", 1);
  const Report report(store, desktop->region().region());
  if (json)
    std::printf("%s\n", report.json().dump(2, ' ', false, nlohmann::json::error_handler_t::replace).c_str());
  else
    report.print(wantsColour());
  return 0;
}

}  // namespace nimbletype::cli
