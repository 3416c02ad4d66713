#include "personal/stats/stats_file.h"

#include <algorithm>
#include <initializer_list>

namespace nimbletype {
namespace {

using Json = nlohmann::json;  // finds a day among thousands
using OrderedJson = nlohmann::ordered_json;

// No one saves more in a day, and ten thousand years of it can still be summed.
constexpr std::int64_t most = 1'000'000'000'000;

std::int64_t readCount(const Json& value) {
  if (value.is_number_float()) {
    const auto number = value.get<double>();
    return number > 0 ? static_cast<std::int64_t>(std::min(number, static_cast<double>(most))) : 0;
  }
  if (value.is_number_unsigned())
    return static_cast<std::int64_t>(std::min<std::uint64_t>(value.get<std::uint64_t>(), most));
  return value.is_number_integer() ? std::max<std::int64_t>(value.get<std::int64_t>(), 0) : 0;
}

// Moves what is called this out of the object.
Json taken(Json& object, const char* name) {
  const auto found = object.find(name);
  if (found == object.end()) return {};
  Json value = std::move(*found);
  object.erase(found);
  return value;
}

AppWords readApps(const Json& apps) {
  AppWords words;
  if (apps.is_object())
    for (const auto& [key, count] : apps.items()) words.emplace(key, readCount(count));
  return words;
}

// Leaves in the object what it does not take.
DayStats takeDay(Json& object) {
  return {.words = readCount(taken(object, "words")),
          .characters = readCount(taken(object, "characters")),
          .accepts = readCount(taken(object, "accepts")),
          .shown = readCount(taken(object, "shown")),
          .apps = readApps(taken(object, "apps"))};
}

std::vector<std::int64_t> readLatencies(const Json& list) {
  std::vector<std::int64_t> latencies;
  if (list.is_array())
    for (const Json& item : list)
      if (item.is_number()) latencies.push_back(readCount(item));
  return latencies;
}

// Whether this can have been written as statistics.
bool isStatistics(const Json& content) {
  if (!content.is_object()) return false;
  const auto days = content.find("days");
  return days == content.end() || days->is_object();
}

void addRest(OrderedJson& object, const Json& rest) {
  if (!rest.is_object()) return;
  for (const auto& [key, value] : rest.items()) object[key] = value;
}

OrderedJson dayJson(const DayStats& day) {
  return {{"words", day.words},
          {"characters", day.characters},
          {"accepts", day.accepts},
          {"shown", day.shown},
          {"apps", day.apps}};
}

}  // namespace

StatsSnapshot StatsFile::load() {
  const auto content = store_.read();
  if (!content) {
    store_.setAside();  // one that is there and cannot be read
    return {};
  }
  Json all = Json::parse(*content, nullptr, false, true);
  if (!isStatistics(all)) {
    log_.log("statistics", "the statistics file cannot be read and was set aside");
    store_.setAside();
    return {};
  }
  StatsSnapshot snapshot{.days = {}, .latencies = readLatencies(taken(all, "latencies"))};
  Json days = taken(all, "days");
  restAtTop_ = std::move(all);
  for (auto& [key, value] : days.items()) {
    const auto day = text::dayFromKey(key);
    if (!day || !value.is_object()) {
      restOfDays_[key] = value;
      continue;
    }
    snapshot.days.emplace(*day, takeDay(value));
    if (!value.empty()) restOfDay_.emplace(*day, std::move(value));
  }
  return snapshot;
}

bool StatsFile::save(const StatsSnapshot& snapshot) {
  const bool saved = store_.write(json(snapshot).dump(-1, ' ', false, Json::error_handler_t::replace));
  if (!saved) log_.log("statistics", "the statistics could not be saved");
  return saved;
}

void StatsFile::forgetRest() {
  restAtTop_ = restOfDays_ = Json();
  restOfDay_.clear();
}

OrderedJson StatsFile::json(const StatsSnapshot& snapshot) const {
  OrderedJson days = OrderedJson::object();
  // Appended, as looking each of them up first would take the longer the more there are.
  auto& list = days.get_ref<OrderedJson::object_t&>();
  list.reserve(snapshot.days.size());
  for (const auto& [day, stats] : snapshot.days) {
    OrderedJson object = dayJson(stats);
    if (const auto rest = restOfDay_.find(day); rest != restOfDay_.end()) addRest(object, rest->second);
    list.emplace_back(text::dayKey(day), std::move(object));
  }
  addRest(days, restOfDays_);
  OrderedJson all{{"days", std::move(days)}, {"latencies", snapshot.latencies}};
  addRest(all, restAtTop_);
  return all;
}

}  // namespace nimbletype
