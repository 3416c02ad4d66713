#pragma once
#include <nlohmann/json.hpp>

#include "platform/storage/defaults_store.h"
#include "platform/storage/file_store.h"
#include "platform/system/main_loop.h"
#include "platform/system/system_log.h"

namespace nimbletype {

// Settings in one JSON object. A number with a fraction or ".0" is a double, one without an int; data is
// {"data": "text"}, or {"bytes": [...]} when it is not UTF-8. Entries in other forms read as absent and are
// kept. Changes of one turn of the main loop are written together at its end.
class JsonDefaultsStore : public DefaultsStore {
 public:
  JsonDefaultsStore(FileStore& file, MainLoop& loop, SystemLog& log);
  ~JsonDefaultsStore() override;
  JsonDefaultsStore(const JsonDefaultsStore&) = delete;
  JsonDefaultsStore& operator=(const JsonDefaultsStore&) = delete;

  std::optional<DefaultsValue> get(std::string_view key) const override;
  void set(std::string_view key, const DefaultsValue& value) override;
  void remove(std::string_view key) override;
  std::vector<std::string> keys() const override;
  // Writes what is still unwritten.
  void flush();

 private:
  void changed();

  FileStore& file_;
  MainLoop& loop_;
  SystemLog& log_;
  nlohmann::ordered_json values_ = nlohmann::ordered_json::object();
  bool unwritten_ = false;
  Task write_;
};

}  // namespace nimbletype
