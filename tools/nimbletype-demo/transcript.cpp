#include "tools/nimbletype-demo/transcript.h"

#include <algorithm>
#include <cstdio>

namespace nimbletype {
namespace {

constexpr std::array<const char*, KeyTiming::stepCount> stepNames{
    "key to field change", "to request", "to first text", "to ghost presented", "to ghost on screen"};

template <typename... Values>
std::string formatted(const char* format, Values... values) {
  std::array<char, 200> line{};
  std::snprintf(line.data(), line.size(), format, values...);
  return line.data();
}

std::string row(const char* name, const std::vector<double>& values) {
  const Spread spread = spreadOf(values);
  return formatted("  %-34s %4zu %9.1f %9.1f\n", name, spread.count, spread.median, spread.p90);
}

template <typename Value>
std::vector<double> collected(std::span<const KeyTiming> timings, Value value) {
  std::vector<double> values;
  for (const KeyTiming& timing : timings)
    if (const std::optional<double> found = value(timing)) values.push_back(*found);
  return values;
}

}  // namespace

void Transcript::say(const std::string& line) {
  plain(formatted("%8.0f ms  ", millisecondsBetween(start_, Clock::now())) + line);
}

void Transcript::plain(const std::string& line) {
  file_ << line << std::endl;
  std::puts(line.c_str());
  std::fflush(stdout);
}

std::string inMilliseconds(double milliseconds) {
  return formatted("%.1f ms", milliseconds);
}

std::string described(const KeyTiming& timing) {
  std::string line;
  for (std::size_t i = 0; i < KeyTiming::stepCount; ++i)
    if (timing.steps[i])
      line += (line.empty() ? "" : ", ") + std::string(stepNames[i]) + " " + inMilliseconds(*timing.steps[i]);
  return line;
}

std::string tableOf(std::span<const KeyTiming> timings) {
  std::string table = formatted("  %-34s %4s %9s %9s\n", "milliseconds", "keys", "median", "p90");
  for (std::size_t i = 0; i < KeyTiming::stepCount; ++i)
    table += row(stepNames[i], collected(timings, [i](const KeyTiming& t) { return t.steps[i]; }));
  const auto totalOf = [&](bool typedOver) {
    return collected(timings,
                     [=](const KeyTiming& t) { return t.typedOver == typedOver ? t.total : std::nullopt; });
  };
  table +=
      row("key to new ghost on screen", totalOf(false)) +
      row("key to shrunk ghost on screen", totalOf(true)) +
      row("field change to unfit ghost gone", collected(timings, [](const KeyTiming& t) { return t.gone; }));
  const auto without = std::count_if(timings.begin(), timings.end(),
                                     [](const KeyTiming& t) { return !t.steps[KeyTiming::shown]; });
  return table +
         formatted("  %zu keys; %td of them without a ghost before the next key", timings.size(), without);
}

}  // namespace nimbletype
