#include "replay/commands/line_reader.h"

#include <algorithm>

namespace nimbletype {
namespace {

[[noreturn]] void wrongType(const char* name, const char* type) {
  throw LineError(std::string("\"") + name + "\" must be " + type);
}
// Fields whose absence is a value of its own.
bool mayBeNull(std::string_view name) {
  constexpr std::string_view names[] = {
      "caretRect", "lineStartX", "fieldFrame",    "fontSize",     "fontName", "domain", "windowTitle",
      "clipboard", "screenText", "nearbyText",    "recentText",   "seconds",  "mode",   "tabAccepts",
      "insertion", "length",     "recordWriting", "engineStatus", "none"};
  return std::find(std::begin(names), std::end(names), name) != std::end(names);
}

[[noreturn]] void missing(const char* name) {
  throw LineError(std::string("\"") + name + "\" is missing");
}

}  // namespace

// None for a missing field, and for null where that means something.
const Json* LineReader::value(const char* name, const char* type, bool (Json::*isOfType)() const noexcept) {
  if (!has(name) || (isNull(name) && mayBeNull(name))) return nullptr;
  const Json& found = line_.at(name);
  if (!(found.*isOfType)()) wrongType(name, type);
  return &found;
}

const Json& LineReader::json(const char* name) {
  if (!has(name)) missing(name);
  return line_.at(name);
}

std::optional<bool> LineReader::boolean(const char* name) {
  const Json* found = value(name, "true or false", &Json::is_boolean);
  return found ? std::optional(found->get<bool>()) : std::nullopt;
}

std::optional<std::int64_t> LineReader::integer(const char* name, std::int64_t least) {
  const Json* found = value(name, "a whole number", &Json::is_number_integer);
  if (!found) return std::nullopt;
  const auto number = found->get<std::int64_t>();
  if (number < least)
    throw LineError(std::string("\"") + name + "\" must not be below " + std::to_string(least));
  return number;
}

std::optional<double> LineReader::number(const char* name) {
  const Json* found = value(name, "a number", &Json::is_number);
  return found ? std::optional(found->get<double>()) : std::nullopt;
}

std::optional<std::string> LineReader::text(const char* name) {
  const Json* found = value(name, "a text", &Json::is_string);
  return found ? std::optional(found->get<std::string>()) : std::nullopt;
}

std::optional<std::vector<std::string>> LineReader::texts(const char* name) {
  const Json* found = value(name, "a list of texts", &Json::is_array);
  if (!found) return std::nullopt;
  std::vector<std::string> list;
  for (const Json& item : *found) {
    if (!item.is_string()) wrongType(name, "a list of texts");
    list.push_back(item.get<std::string>());
  }
  return list;
}

std::optional<TopLeftRect> LineReader::rect(const char* name) {
  constexpr const char* form = "four numbers [x,y,width,height] or null";
  const Json* found = value(name, form, &Json::is_array);
  if (!found) return std::nullopt;
  if (found->size() != 4) wrongType(name, form);
  for (const Json& item : *found)
    if (!item.is_number()) wrongType(name, form);
  return TopLeftRect{found->at(0).get<double>(), found->at(1).get<double>(), found->at(2).get<double>(),
                     found->at(3).get<double>()};
}

std::string LineReader::requiredText(const char* name) {
  auto found = text(name);
  if (!found) missing(name);
  return *std::move(found);
}

std::int64_t LineReader::requiredInteger(const char* name) {
  const auto found = integer(name);
  if (!found) missing(name);
  return *found;
}

std::vector<std::string> LineReader::unread() const {
  std::vector<std::string> names;
  for (const auto& [name, unused] : line_.items())
    if (!seen_.contains(name)) names.push_back(name);
  return names;
}

}  // namespace nimbletype
