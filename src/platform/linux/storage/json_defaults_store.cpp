#include "platform/linux/storage/json_defaults_store.h"

#include "text/text.h"

namespace nimbletype {
namespace {

using Json = nlohmann::ordered_json;

std::optional<DefaultsValue> readData(const Json& object) {
  if (object.size() != 1) return std::nullopt;
  if (const auto data = object.find("data"); data != object.end() && data->is_string())
    return DataValue{data->get<std::string>()};
  const auto bytes = object.find("bytes");
  if (bytes == object.end() || !bytes->is_array()) return std::nullopt;
  DataValue value;
  for (const auto& byte : *bytes) {
    if (!byte.is_number_unsigned() || byte.get<std::uint64_t>() > 0xFF) return std::nullopt;
    value.bytes += static_cast<char>(byte.get<std::uint8_t>());
  }
  return value;
}

std::optional<DefaultsValue> read(const Json& json) {
  switch (json.type()) {
    case Json::value_t::boolean:
      return json.get<bool>();
    case Json::value_t::number_integer:
      return json.get<std::int64_t>();
    case Json::value_t::number_float:
      return json.get<double>();
    case Json::value_t::string:
      return json.get<std::string>();
    case Json::value_t::object:
      return readData(json);
    case Json::value_t::number_unsigned:
      if (json.get<std::uint64_t>() > INT64_MAX) return std::nullopt;
      return json.get<std::int64_t>();
    default:
      return std::nullopt;
  }
}

Json dataJson(const DataValue& data) {
  if (text::isValidUtf8(data.bytes)) return {{"data", data.bytes}};
  auto bytes = Json::array();
  for (const char c : data.bytes) bytes.push_back(static_cast<unsigned char>(c));
  return {{"bytes", std::move(bytes)}};
}

Json written(const DefaultsValue& value) {
  return std::visit(
      []<typename T>(const T& v) -> Json {
        if constexpr (std::same_as<T, DataValue>)
          return dataJson(v);
        else
          return v;
      },
      value);
}

}  // namespace

JsonDefaultsStore::JsonDefaultsStore(FileStore& file, MainLoop& loop, SystemLog& log)
    : file_(file), loop_(loop), log_(log) {
  const auto content = file_.read();
  if (!content) return;
  auto parsed = Json::parse(*content, nullptr, false, true);
  if (parsed.is_object()) {
    values_ = std::move(parsed);
    return;
  }
  log_.log("settings", file_.setAside() ? "the settings file cannot be read and was set aside"
                                        : "the settings file cannot be read");
}

JsonDefaultsStore::~JsonDefaultsStore() {
  flush();
}

std::optional<DefaultsValue> JsonDefaultsStore::get(std::string_view key) const {
  const auto found = values_.find(key);
  return found == values_.end() ? std::nullopt : read(*found);
}

void JsonDefaultsStore::set(std::string_view key, const DefaultsValue& value) {
  values_[std::string(key)] = written(value);
  changed();
}

void JsonDefaultsStore::remove(std::string_view key) {
  if (values_.erase(std::string(key)) > 0) changed();
}

std::vector<std::string> JsonDefaultsStore::keys() const {
  std::vector<std::string> all;
  for (const auto& [key, value] : values_.items()) all.push_back(key);
  return all;
}

void JsonDefaultsStore::flush() {
  write_.cancel();
  if (!unwritten_) return;
  unwritten_ = !file_.write(values_.dump(2, ' ', false, Json::error_handler_t::replace) + "\n");
  if (unwritten_) log_.log("settings", "the settings could not be saved");
}

void JsonDefaultsStore::changed() {
  unwritten_ = true;
  write_ = loop_.after(Milliseconds(0), [this] { flush(); });
}

}  // namespace nimbletype
