#include "core/rules/rules_file.h"

#include <cmath>

#include "text/format/timestamp.h"

namespace nimbletype {
namespace {

using Json = nlohmann::ordered_json;

const Json& member(const Json& object, const char* name) {
  static const Json none;
  const auto found = object.find(name);
  return found == object.end() ? none : *found;
}

// ISO 8601, or seconds since 1970 as a hand may have written.
std::optional<WallTime> readTime(const Json& value) {
  if (value.is_string()) return text::fromIso8601(value.get<std::string>());
  if (!value.is_number()) return std::nullopt;
  const auto seconds = std::floor(value.get<double>());
  const auto last = std::chrono::duration<double>(untilResumed.time_since_epoch()).count();
  if (!(seconds >= 0)) return std::nullopt;
  if (seconds >= last) return untilResumed;
  return WallTime(std::chrono::seconds(static_cast<std::int64_t>(seconds)));
}

std::optional<std::string> readString(const Json& value) {
  return value.is_string() ? std::optional(value.get<std::string>()) : std::nullopt;
}

std::optional<bool> readBool(const Json& value) {
  return value.is_boolean() ? std::optional(value.get<bool>()) : std::nullopt;
}

template <typename Enum>
std::optional<Enum> readChoice(const Json& value) {
  return readString(value).and_then([](const std::string& raw) { return fromRawValue<Enum>(raw); });
}

std::optional<AppRule> readRule(const Json& value) {
  if (!value.is_object()) return std::nullopt;
  return AppRule{.mode = readChoice<RuleMode>(member(value, "mode")).value_or(RuleMode::inherit),
                 .tabAccepts = readBool(member(value, "tabAccepts")),
                 .insertion = readChoice<InsertionMethod>(member(value, "insertion")),
                 .length = readChoice<CompletionLength>(member(value, "length")),
                 .recordWriting = readBool(member(value, "recordWriting"))};
}

template <typename Value>
std::map<std::string, Value> readMap(const Json& object, std::optional<Value> (*read)(const Json&)) {
  std::map<std::string, Value> map;
  if (!object.is_object()) return map;
  for (const auto& [key, item] : object.items())
    if (auto value = isRuleKey(key) ? read(item) : std::nullopt) map.emplace(key, *std::move(value));
  return map;
}

template <typename Value>
void put(Json& object, const char* name, const std::optional<Value>& value) {
  if (value)
    object[name] = *value;
  else
    object.erase(name);
}

template <typename Enum>
std::optional<std::string> raw(std::optional<Enum> value) {
  return value ? std::optional<std::string>(rawValue(*value)) : std::nullopt;
}

Json ruleJson(const AppRule& rule, const Json& read) {
  Json object = read.is_object() ? read : Json::object();
  object["mode"] = rawValue(rule.mode);
  put(object, "tabAccepts", rule.tabAccepts);
  put(object, "insertion", raw(rule.insertion));
  put(object, "length", raw(rule.length));
  put(object, "recordWriting", rule.recordWriting);
  return object;
}

}  // namespace

RulesState RulesFile::load() {
  const auto content = store_.read();
  if (!content) return {};
  read_ = Json::parse(*content, nullptr, false, true);
  if (!read_.is_object()) {
    log_.log("rules", "the rules file cannot be read and was set aside");
    store_.setAside();
    read_ = Json::object();
  }
  return {.rules = readMap<AppRule>(member(read_, "rules"), readRule),
          .pauses = readMap<WallTime>(member(read_, "pauses"), readTime),
          .globalPauseUntil = readTime(member(read_, "globalPauseUntil")),
          .names = readMap<std::string>(member(read_, "names"), readString)};
}

bool RulesFile::save(const RulesState& state) {
  const bool saved = store_.write(json(state).dump(2, ' ', false, Json::error_handler_t::replace) + "\n");
  if (!saved) log_.log("rules", "the rules could not be saved");
  return saved;
}

Json RulesFile::json(const RulesState& state) const {
  Json rules = Json::object();
  const auto& readRules = member(read_, "rules");
  for (const auto& [key, rule] : state.rules) rules[key] = ruleJson(rule, member(readRules, key.c_str()));
  Json pauses = Json::object();
  for (const auto& [key, until] : state.pauses) pauses[key] = text::toIso8601(until);
  Json all = read_;
  all["rules"] = std::move(rules);
  all["pauses"] = std::move(pauses);
  put(all, "globalPauseUntil", state.globalPauseUntil.transform(text::toIso8601));
  all["names"] = state.names;
  return all;
}

}  // namespace nimbletype
